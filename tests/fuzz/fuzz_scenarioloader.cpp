// Scenario documents as anybody may write them: whatever the bytes, the loader ends
// with a scenario whose state the controller could hold, or with one short line that
// says where the document is wrong and why.
#include "../controllerdump.h"
#include "commandinterpreter.h"
#include "controllerinvariants.h"
#include "scenarioloader.h"

#include <QByteArray>
#include <QRegularExpression>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

// The longest message a hostile document may cause: a path of cut steps and a reason.
const int kLongestError = 2000;

void fail(const char* what, const QString& detail)
{
    fprintf(stderr, "%s: %s\n", what, qPrintable(detail.left(kLongestError)));
    abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray json = QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
    Scenario scenario;
    QString error;
    if (ScenarioLoader::load(json, QStringLiteral("s.json"), &scenario, &error)) {
        const QString broken = brokenInvariant(scenario.state);
        if (!broken.isEmpty())
            fail("a loaded scenario breaks a rule", broken);
        // What it holds reaches the wire only in well-formed replies, texts without control characters.
        static const CommandInterpreter interpreter;
        for (const QByteArray& path : readablePaths(scenario.state.cameras.size())) {
            const QString bad = badReply("quarvo2 get " + path, interpreter.execute(scenario.state, "quarvo2 get " + path));
            if (!bad.isEmpty())
                fail(path.constData(), bad);
        }
        for (const FaultRule& rule : qAsConst(scenario.faults)) {
            if (rule.action == FaultRule::Fail && rule.text.contains('\n'))
                fail("a fault's error text holds a line break", QString::fromUtf8(rule.text));
        }
        return 0;
    }
    static const QRegularExpression located(QStringLiteral("^s\\.json:(\\d+): \\S"));
    const QRegularExpressionMatch match = located.match(error);
    if (!match.hasMatch())
        fail("an error without its place", error);
    if (match.captured(1).toInt() > json.count('\n') + 1)
        fail("an error beyond the last line", error);
    if (error.size() > kLongestError)
        fail("an error too long", error);
    for (const QChar c : error) {
        if (c.category() == QChar::Other_Control)
            fail("a control character in an error", error);
    }
    return 0;
}
