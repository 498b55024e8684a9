// Request lines as any client may send them, to each built-in system: every request
// gets one well-formed reply line, and no sequence of requests brings the controller
// into a state it should have refused.
#include "commandinterpreter.h"
#include "controllerinvariants.h"
#include "simulatedcontroller.h"

#include <QByteArray>
#include <QList>
#include <QVector>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

// A burst of requests, as many as fit; more only repeat what the fuzzer already tries.
const int kMostRequests = 256;

QVector<ControllerState> builtInStates()
{
    QVector<ControllerState> states;
    SimulatedController controller;
    for (const QString& name : SimulatedController::builtInScenarios()) {
        if (!controller.loadBuiltInScenario(name))
            abort();
        states.append(controller.state());
    }
    return states;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QVector<ControllerState> systems = builtInStates();
    static const CommandInterpreter interpreter;
    if (size == 0)
        return 0;
    // The first byte picks the system, the rest are request lines.
    ControllerState state = systems.at(data[0] % systems.size());
    const QList<QByteArray> requests =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data) + 1, int(size) - 1).split('\n').mid(0, kMostRequests);
    for (const QByteArray& request : requests) {
        const QByteArray reply = interpreter.execute(state, request);
        const QString bad = badReply(request, reply);
        const QString broken = brokenInvariant(state);
        if (!bad.isEmpty() || !broken.isEmpty()) {
            fprintf(stderr, "after %s\nanswered %s\n%s%s\n", request.toPercentEncoding(" ").constData(),
                    reply.left(300).toPercentEncoding(" ").constData(), qPrintable(bad), qPrintable(broken));
            abort();
        }
    }
    return 0;
}
