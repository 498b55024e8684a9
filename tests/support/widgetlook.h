#ifndef WIDGETLOOK_H
#define WIDGETLOOK_H

// What the operator sees of a control, as one text: "hidden", or "disabled" or
// "enabled" followed by what it shows (a label's or button's text and a check box's
// "on" or "off", a combo box's current text, "value of maximum" for a slider, a spin
// box's text), so that one comparison checks a whole group of controls.

#include <QStringList>

class QWidget;

QString look(QWidget* control);

// For each "name: ..." of expected, "name: " and the look of that control under root,
// so that a table row names only the controls it is about.
QStringList looksOf(QWidget* root, const QStringList& expected);

#endif // WIDGETLOOK_H
