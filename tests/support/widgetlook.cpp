#include "widgetlook.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>

QString look(QWidget* control)
{
    if (!control)
        return QStringLiteral("missing");
    if (control->isHidden())
        return QStringLiteral("hidden");
    QString shown;
    if (auto* label = qobject_cast<QLabel*>(control))
        shown = label->text();
    else if (auto* combo = qobject_cast<QComboBox*>(control))
        shown = combo->currentText();
    else if (auto* slider = qobject_cast<QAbstractSlider*>(control))
        shown = QStringLiteral("%1 of %2").arg(slider->value()).arg(slider->maximum());
    else if (auto* spin = qobject_cast<QAbstractSpinBox*>(control))
        shown = spin->text();
    else if (auto* button = qobject_cast<QAbstractButton*>(control))
        shown = button->isCheckable() ? QString(button->isChecked() ? "on" : "off") : button->text();
    return QString(control->isEnabled() ? "enabled " : "disabled ") + shown;
}

QStringList looksOf(QWidget* root, const QStringList& expected)
{
    QStringList looks;
    for (const QString& line : expected) {
        const QString name = line.section(QLatin1String(": "), 0, 0);
        looks << name + QLatin1String(": ") + look(root->findChild<QWidget*>(name));
    }
    return looks;
}
