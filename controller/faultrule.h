#ifndef FAULTRULE_H
#define FAULTRULE_H

#include <QByteArray>
#include <QString>

// A misbehaviour of the controller for requests matching a glob: refuse them,
// answer a fixed text (garbage included), answer late, or drop the connection.
struct FaultRule
{
    enum Action { Fail, Reply, Late, Drop };

    QString match;        // glob (QRegularExpression::wildcardToRegularExpression) on the whole request line
    Action action = Fail; // Fail: `quarvo2 err ...`; Reply: answer `text` verbatim (garbage allowed); Late: normal answer after delayMs; Drop: no answer, connection dropped
    QByteArray text;      // Reply: the whole answer; Fail: the error text (a default one when empty)
    int delayMs = 0;
    int times = -1;       // how many matching requests it hits; -1 = every one
    QString name;         // shown in the command log; empty: "<action> <match>"

    // The name the command log shows for this rule.
    QString displayName() const;

    // The words used for the actions in scenario files: "fail", "reply", "late", "drop".
    static QString actionName(Action action);
    static bool actionFromName(const QString& name, Action* action);
};

#endif // FAULTRULE_H
