#ifndef RANDOMOPERATOR_H
#define RANDOMOPERATOR_H

// An operator who changes things at random in the open camera settings dialog, as through
// mouse and keys: a tab change, one move of a visible, enabled control (OK and Cancel aside),
// or a cell of the overview's table written as its editor does. Seeded by the caller.

#include <QRandomGenerator>
#include <QString>

class DialogRig;

class RandomOperator
{
public:
    explicit RandomOperator(quint32 seed) : m_random(seed) {}

    // One change in the rig's open dialog; says what it touched, for the message of a failure.
    QString act(DialogRig& rig);
    QRandomGenerator& random() { return m_random; }

private:
    QString editCell(DialogRig& rig);

    QRandomGenerator m_random;
};

#endif // RANDOMOPERATOR_H
