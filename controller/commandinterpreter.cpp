#include "commandinterpreter.h"

#include "controllerstate.h"
#include "wireformat.h"

namespace {

const QByteArray kPrefix("quarvo2");

QByteArray refusal(ControllerError code, const QByteArray& text)
{
    return WireFormat::errorLine(code, text);
}

} // namespace

struct CommandInterpreter::Resolved
{
    const CommandDefinition* definition = nullptr;
    CommandCall call;
    bool isSet = false;
    QByteArray path; // the request after "quarvo2 get "
};

bool CommandInterpreter::resolve(const ControllerState& state, const QByteArray& request, Access access,
                                 Resolved* resolved, QByteArray* error) const
{
    const QList<QByteArray> words = request.split(' ');
    // Words are separated by single blanks; an empty word means a stray blank. A control
    // character is no part of the protocol, and echoed in a reply it could break the line.
    if (words.size() < 3 || words.at(0) != kPrefix || (words.at(1) != "get" && words.at(1) != "set")
        || words.contains(QByteArray()) || WireFormat::holdsControlCharacter(request)) {
        *error = refusal(ControllerError::UnknownCommand, "malformed request");
        return false;
    }
    resolved->isSet = words.at(1) == "set";
    resolved->path = request.mid(kPrefix.size() + 5);
    const QList<QByteArray> pathWords = words.mid(2);
    int headWords = 0;
    const CommandDefinition* definition = m_vocabulary.find(pathWords, &headWords);
    if (!definition) {
        *error = refusal(ControllerError::UnknownCommand, "unknown command");
        return false;
    }
    if (access == Access::Wire && !state.protocolAtLeast(definition->since)) {
        *error = refusal(ControllerError::NotInProtocol,
                         "not available in protocol " + state.protocolVersion.toString().toLatin1());
        return false;
    }

    const int argumentCount = (definition->onCamera ? 1 : 0) + definition->words;
    const int rest = pathWords.size() - headWords;
    if (resolved->isSet ? rest <= argumentCount : rest != argumentCount) {
        *error = refusal(ControllerError::InvalidValue,
                         resolved->isSet && rest == argumentCount ? "missing value" : "wrong number of arguments");
        return false;
    }
    const bool writable = definition->set && (access == Access::Setup || !definition->setupOnly);
    if (resolved->isSet ? !writable : !definition->get) {
        *error = refusal(ControllerError::InvalidValue, resolved->isSet ? "read-only" : "write-only");
        return false;
    }

    CommandCall& call = resolved->call;
    call.setup = access == Access::Setup;
    int next = headWords;
    if (definition->onCamera) {
        const QByteArray& cameraWord = pathWords.at(next++);
        int number = 0;
        if (!WireFormat::parseIndexWord(cameraWord, "c", &number) || number > state.cameras.size()) {
            *error = refusal(ControllerError::NoSuchCamera, "no such camera " + cameraWord);
            return false;
        }
        call.camera = number - 1;
    }
    call.args = pathWords.mid(next, definition->words);
    if (resolved->isSet) {
        QList<QByteArray> valueWords = pathWords.mid(next + definition->words);
        call.value = valueWords.join(' ');
        if (access == Access::Wire && definition->configuration && !state.configChangeable) {
            *error = refusal(ControllerError::ConfigurationLocked, "configuration is locked");
            return false;
        }
    }
    resolved->definition = definition;
    return true;
}

QByteArray CommandInterpreter::replyLine(const QByteArray& request, const Resolved& resolved,
                                         const CommandOutcome& outcome)
{
    if (!outcome.ok)
        return refusal(outcome.error, outcome.text);
    if (resolved.isSet)
        return request;
    QByteArray line = kPrefix + " set " + resolved.path;
    if (!outcome.value.isEmpty())
        line += ' ' + outcome.value;
    return line;
}

QByteArray CommandInterpreter::execute(ControllerState& state, const QByteArray& request, Access access) const
{
    Resolved resolved;
    QByteArray error;
    if (!resolve(state, request, access, &resolved, &error))
        return error;
    const CommandOutcome outcome = resolved.isSet ? resolved.definition->set(state, resolved.call)
                                                  : resolved.definition->get(state, resolved.call);
    return replyLine(request, resolved, outcome);
}

QByteArray CommandInterpreter::query(const ControllerState& state, const QByteArray& request, Access access) const
{
    Resolved resolved;
    QByteArray error;
    if (!resolve(state, request, access, &resolved, &error))
        return error;
    if (resolved.isSet)
        return refusal(ControllerError::InvalidValue, "a query cannot set");
    return replyLine(request, resolved, resolved.definition->get(state, resolved.call));
}
