#ifndef COMBOBOXDELEGATE_H
#define COMBOBOXDELEGATE_H

#include <QItemDelegate>

// Edits a camera's "Sync group" cell in the overview table: a choice of the first
// three sync card channels. A camera without a sync group gets no editor.
class ComboBoxDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    explicit ComboBoxDelegate(QObject* parent = nullptr) : QItemDelegate(parent) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};

#endif // COMBOBOXDELEGATE_H
