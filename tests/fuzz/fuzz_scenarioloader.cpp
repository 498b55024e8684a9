// Scenario documents as anybody may write them: whatever the bytes, the loader ends
// with a scenario whose state the controller could hold, or with one short line that
// says where the document is wrong and why.
#include "../controllerdump.h"
#include "commandinterpreter.h"
#include "controllerinvariants.h"
#include "scenarioloader.h"

#include <QRegularExpression>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray json = QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
    Scenario scenario;
    QString error;
    if (ScenarioLoader::load(json, QStringLiteral("s.json"), &scenario, &error)) {
        const QString broken = brokenInvariant(scenario.state);
        if (!broken.isEmpty())
            fuzzFailure("a loaded scenario breaks a rule", broken);
        // What it holds reaches the wire only in well-formed replies, texts without control characters.
        static const CommandInterpreter interpreter;
        for (const QByteArray& path : readablePaths(scenario.state.cameras.size())) {
            const QString bad = badReply("quarvo2 get " + path, interpreter.execute(scenario.state, "quarvo2 get " + path));
            if (!bad.isEmpty())
                fuzzFailure(path.constData(), bad);
        }
        for (const FaultRule& rule : qAsConst(scenario.faults)) {
            if (rule.action == FaultRule::Fail && rule.text.contains('\n'))
                fuzzFailure("a fault's error text holds a line break", QString::fromUtf8(rule.text));
        }
        return 0;
    }
    // One line that says where and why: a path of cut steps and a reason, 2000 characters at most.
    static const QRegularExpression located(QStringLiteral("^s\\.json:(\\d+): \\S"));
    const QRegularExpressionMatch match = located.match(error);
    if (!match.hasMatch() || match.captured(1).toInt() > json.count('\n') + 1 || error.size() > 2000)
        fuzzFailure("an error without its place, beyond the last line or too long", error);
    for (const QChar c : error) {
        if (c.category() == QChar::Other_Control)
            fuzzFailure("a control character in an error", error);
    }
    return 0;
}
