#include "faultrule.h"

namespace {

struct ActionWord
{
    FaultRule::Action action;
    const char* word;
};

const ActionWord kActionWords[] = {
    {FaultRule::Fail, "fail"},
    {FaultRule::Reply, "reply"},
    {FaultRule::Late, "late"},
    {FaultRule::Drop, "drop"},
};

} // namespace

QString FaultRule::displayName() const
{
    if (!name.isEmpty())
        return name;
    return actionName(action) + QLatin1Char(' ') + match;
}

QString FaultRule::actionName(Action action)
{
    for (const ActionWord& entry : kActionWords) {
        if (entry.action == action)
            return QString::fromLatin1(entry.word);
    }
    return QString();
}

bool FaultRule::actionFromName(const QString& name, Action* action)
{
    for (const ActionWord& entry : kActionWords) {
        if (name == QLatin1String(entry.word)) {
            *action = entry.action;
            return true;
        }
    }
    return false;
}
