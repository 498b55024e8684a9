#ifndef CAMERASETTINGSDLG_H
#define CAMERASETTINGSDLG_H

#include "ui_camerasettings.h"

#include <QDialog>
#include <QIcon>
#include <QVector>

class BackendVersions;
class CameraSettingsMessagereceiver;
class CameraWdg;
class ChangeTrackingStandardItemModel;
class IOManager;
class OverviewWdg;
class QKeyEvent;
class QStandardItem;

// The modal camera settings dialog behind the module's menu entry. It reloads every
// camera from the controller at each opening and shows either the camera table (an
// overview tab and one tab per camera) or, on the all-in-one BRISKBOX system, a compact
// panel that sets all built-in cameras together.
class CameraSettingsDlg : public QDialog, public Ui::CameraSettingsDialog
{
    Q_OBJECT

public:
    CameraSettingsDlg(IOManager* cm, QWidget* parent, BackendVersions* beVers);
    ~CameraSettingsDlg() override;

    void about_to_exit();
    bool is_config_locked() const;

public slots:
    int update_and_exec();
    void onModelItemChanged(QStandardItem* item);
    void on_btnCancel_clicked();
    void on_btnOk_clicked();
    void on_pushButton_showDetails_clicked();

protected slots:
    void keyPressEvent(QKeyEvent* event) override;

public slots:
    void accept() override;
    void reject() override;
    void onSendShowDynReflexSuppr(bool show);

private:
    void update_from_module();
    void initMessageReceiver();
    void enable_lct_widget(bool on);
    void buildCompactPanel();
    void buildCameraTable();
    void applyConfigLock(bool locked);

    IOManager* cm;
    BackendVersions* beVers;
    QVector<CameraWdg*> cams;
    OverviewWdg* overview;
    ChangeTrackingStandardItemModel* model;
    bool bShowDynReflexSuppr;
    CameraSettingsMessagereceiver* messageReceiver;
    int m_lct_flash_intensity;
    bool m_bStaticReflexskip;
    bool m_lct_modulated_flash;
    int m_lct_num_cam;
    bool m_is_config_locked;
    QIcon m_icon_lock;
    QWidget* m_parent;
    QIcon m_icon_ok;
    QIcon m_icon_cross;
    bool bUserAction;
};

#endif // CAMERASETTINGSDLG_H
