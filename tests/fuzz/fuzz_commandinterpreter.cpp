// Request lines as any client may send them, to each built-in system: every request
// gets one well-formed reply line, and no sequence of requests brings the controller
// into a state it should have refused.
#include "commandinterpreter.h"
#include "controllerinvariants.h"
#include "simulatedcontroller.h"

#include <QVector>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QVector<ControllerState> systems = [] {
        QVector<ControllerState> states;
        SimulatedController controller;
        for (const QString& name : SimulatedController::builtInScenarios()) {
            if (!controller.loadBuiltInScenario(name))
                abort();
            states.append(controller.state());
        }
        return states;
    }();
    static const CommandInterpreter interpreter;
    if (size == 0)
        return 0;
    // The first byte picks the system, the rest are request lines: a burst of as many as
    // fit, since more only repeat what the fuzzer already tries.
    ControllerState state = systems.at(data[0] % systems.size());
    for (const QByteArray& request : QByteArray::fromRawData(reinterpret_cast<const char*>(data) + 1, int(size) - 1).split('\n').mid(0, 256)) {
        const QByteArray reply = interpreter.execute(state, request);
        const QString broken = badReply(request, reply) + brokenInvariant(state);
        if (!broken.isEmpty())
            fuzzFailure(request.toPercentEncoding(" ").constData(), "answered " + reply.left(300).toPercentEncoding(" ") + ": " + broken);
    }
    return 0;
}
