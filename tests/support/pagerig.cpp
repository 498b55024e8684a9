#include "pagerig.h"

#include <CameraSettingsDlg.h>
#include <cameratablecolumns.h>

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

PageRig::PageRig(const QString& builtInScenario)
    : ControllerFixture(builtInScenario), tabs(new QTabWidget(&host)), table(0, CameraTable::ColumnCount)
{
    new QVBoxLayout(&host);
    host.layout()->addWidget(tabs);
}

QWidget* PageRig::childOf(QObject* parent, const char* name)
{
    QWidget* found = parent->findChild<QWidget*>(QLatin1String(name));
    if (!found)
        qFatal("no widget %s", name);
    return found;
}

void PageRig::load(bool details)
{
    table.setChangeRecordingActive(false);
    int cameras = 0;
    channel()->getInt(&cameras, "camera number_of_cameras");
    for (int i = 0; i < cameras; ++i) {
        auto* page = new CameraWdg(channel(), &host, versions());
        page->setModel(&table);
        page->update_from_module(i);
        page->showDetails(details);
        pages << page;
        tabs->addTab(page, page->getSerial());
        table.insertRow(i);
        CameraSettingsDlg::addCameraRow(&table, page, i);
    }
    table.setChangeRecordingActive(true);
    mark();
}

void PageRig::show()
{
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
}

QStringList PageRig::looks(const QStringList& expected) const
{
    QStringList seen;
    for (const QString& line : expected) {
        const int slash = line.indexOf(QLatin1Char('/'));
        const int prefix = slash > 0 && slash < line.indexOf(QLatin1Char(':')) ? slash + 1 : 0;
        seen << line.left(prefix) + looksOf(pages.at(prefix ? line.left(slash).toInt() : 0), {line.mid(prefix)}).value(0);
    }
    return seen;
}

QString PageRig::cellText(int row, int column) const
{
    return ::cellText(&table, row, column);
}

QStringList cellTexts(const QAbstractItemModel* table, int column, int rows)
{
    QStringList texts;
    for (int row = 0; row < (rows < 0 ? table->rowCount() : rows); ++row)
        texts << cellText(table, row, column);
    return texts;
}

QStringList PageRig::cells(int row, std::initializer_list<int> columns) const
{
    QStringList texts;
    for (int column : columns)
        texts << cellText(row, column);
    return texts;
}

QString cellText(const QAbstractItemModel* table, int row, int column)
{
    // Six digits, as the operator reads a size, not the last bit of a computed double.
    const QVariant value = table->data(table->index(row, column));
    return value.type() == QVariant::Double ? QString::number(value.toDouble()) : value.toString();
}

void operate(QWidget* control, const QVariant& value)
{
    if (auto* combo = qobject_cast<QComboBox*>(control)) {
        const int index = value.isValid() ? value.toInt() : combo->count() - 1;
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        if (!button->isCheckable() || !value.isValid() || button->isChecked() != value.toBool())
            button->click();
    } else if (!control->setProperty("value", value)) { // a slider or a spin box
        QFAIL("no control the operator can move");
    }
}

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
