#include "snapshotdiffdialog.h"

#include <camerasnapshot.h>
#include <settingvalue.h>
#include <snapshotdiff.h>

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

void addRow(QTableWidget* table, const QStringList& cells)
{
    const int row = table->rowCount();
    table->insertRow(row);
    for (int column = 0; column < cells.size(); ++column)
        table->setItem(row, column, new QTableWidgetItem(cells.at(column)));
}

} // namespace

SnapshotDiffDialog::SnapshotDiffDialog(const SnapshotDiff& diff, const QString& snapshotName,
                                       const QStringList& notes, bool offerRestore, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("snapshotDiffDialog"));
    setWindowTitle(offerRestore ? tr("Restore %1").arg(snapshotName) : tr("Compare %1").arg(snapshotName));
    resize(640, 420);

    auto* table = new QTableWidget(0, 4, this);
    table->setObjectName(QStringLiteral("differencesTable"));
    table->setHorizontalHeaderLabels({tr("Camera"), tr("Setting"), tr("Snapshot"), tr("Controller")});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    for (const SnapshotDiff::Change& change : diff.systemChanges())
        addRow(table, {tr("system"), change.name, SettingValue::shown(change.before), SettingValue::shown(change.after)});
    for (const SnapshotDiff::Camera& camera : diff.cameras()) {
        const QString name = QStringLiteral("%1 (%2, %3)").arg(camera.serial, camera.model, SnapshotDiff::ports(camera));
        if (camera.positionBefore == 0 || camera.positionAfter == 0)
            addRow(table, {name, tr("camera"), camera.positionBefore > 0 ? tr("present") : tr("(absent)"),
                           camera.positionAfter > 0 ? tr("present") : tr("(absent)")});
        for (const SnapshotDiff::Change& change : camera.changes)
            addRow(table, {name, change.name, SettingValue::shown(change.before), SettingValue::shown(change.after)});
    }
    table->resizeColumnsToContents();

    auto* notesLabel = new QLabel(notes.join(QLatin1Char('\n')), this);
    notesLabel->setObjectName(QStringLiteral("notesLabel"));
    notesLabel->setVisible(!notes.isEmpty());

    auto* buttons = new QDialogButtonBox(this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    if (offerRestore) {
        buttons->addButton(tr("Restore"), QDialogButtonBox::AcceptRole)->setObjectName(QStringLiteral("restoreButton"));
        buttons->addButton(QDialogButtonBox::Cancel);
    } else {
        buttons->addButton(QDialogButtonBox::Close);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(notesLabel);
    layout->addWidget(buttons);
}
