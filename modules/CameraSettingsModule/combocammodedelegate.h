#ifndef COMBOCAMMODEDELEGATE_H
#define COMBOCAMMODEDELEGATE_H

#include <QItemDelegate>

class IOManager;

// Edits a camera's "Camera mode" cell in the overview table with the modes the
// camera describes itself, asked from the controller each time an editor opens. The
// choice goes into the row twice: the description the operator sees and the mode key
// the controller takes.
class ComboCamModeDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    ComboCamModeDelegate(QObject* parent, IOManager* channel) : QItemDelegate(parent), iom(channel) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;


private:
    IOManager* iom;
};

#endif // COMBOCAMMODEDELEGATE_H
