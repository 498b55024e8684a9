#ifndef COMBOCAMMODEDELEGATE_H
#define COMBOCAMMODEDELEGATE_H

#include <QItemDelegate>
#include <QString>

class IOManager;
class QComboBox;

// Edits a camera's "Camera mode" cell in the overview table with the modes the
// camera describes itself, asked from the controller each time an editor opens. The
// choice goes into the row twice: the description the operator sees and the mode key
// the controller takes.
class ComboCamModeDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    ComboCamModeDelegate(QObject* parent, IOManager* iom);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

    // "m01" for mode 1: the mode key as the controller names it.
    static QString modeKey(int mode);
    // Adds one item per mode 1 ... count of the camera (1-based number): its description
    // as text, its key as data. A mode whose description cannot be read is left out.
    static void addModeItems(QComboBox* comboBox, IOManager* channel, int camera, int count);

private:
    IOManager* iom;
};

#endif // COMBOCAMMODEDELEGATE_H
