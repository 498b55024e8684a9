#ifndef CHECKBOXDELEGATE_H
#define CHECKBOXDELEGATE_H

#include <QItemDelegate>

class QStandardItemModel;

// Paints a boolean cell of the overview table ("Mod. flash", "Static reflex suppr.",
// "Dyn. reflex suppr.") as a check box, or leaves it blank where the camera lacks the
// feature. It opens no editor: the page toggles the cells by a mouse press.
class CheckboxDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    explicit CheckboxDelegate(QObject* parent = nullptr) : QItemDelegate(parent) {}

    // The camera table whose support flags decide where a check box is shown; not owned.
    void setModel(QStandardItemModel* tableModel) { model = tableModel; }
    bool isShowCheckbox(const QModelIndex& index) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    QStandardItemModel* model = nullptr;
};

#endif // CHECKBOXDELEGATE_H
