// Runs a fuzz harness over files, so that its corpus and every input that once made it
// fail stay ordinary test cases in builds without libFuzzer. Arguments are files or
// folders (all regular files inside, in name order); a missing folder counts as empty.
#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) __attribute__((weak));

int main(int argc, char** argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QString::fromLocal8Bit(argv[i]));
        QStringList inputs = QFileInfo(folder.path()).isFile() ? QStringList(folder.path()) : QStringList();
        for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden, QDir::Name))
            inputs << folder.filePath(name);
        for (const QString& input : qAsConst(inputs)) {
            QFile file(input);
            const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            std::printf("%s\n", qPrintable(input));
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
            ++count;
        }
    }
    std::printf("%d inputs replayed\n", count);
    return 0;
}
