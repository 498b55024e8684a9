#ifndef CAMERASETTINGSDLG_H
#define CAMERASETTINGSDLG_H

#include "ui_camerasettings.h"

class BackendVersions;
class CameraSettingsMessagereceiver;
class CameraWdg;
class ChangeTrackingStandardItemModel;
class IOManager;
class OverviewWdg;
class QStandardItem;
class QStandardItemModel;

// The modal camera settings dialog behind the module's menu entry. It reloads every
// camera from the controller at each opening and shows either the camera table (an
// overview tab and one tab per camera) or, on the all-in-one BRISKBOX system, a compact
// panel that sets all built-in cameras together.
class CameraSettingsDlg : public QDialog, public Ui::CameraSettingsDialog
{
    Q_OBJECT

public:
    CameraSettingsDlg(IOManager* cm, QWidget* parent, BackendVersions* beVers);

    void about_to_exit();
    bool is_config_locked() const;

    // Fills row `row` of a camera table from a loaded camera page, as every opening does;
    // the page and overview suites fill their tables with it as well.
    static void addCameraRow(QStandardItemModel* model, CameraWdg* page, int row);

public slots:
    int update_and_exec();
    void onModelItemChanged(QStandardItem* item);
    void on_btnCancel_clicked() { reject(); }
    void on_btnOk_clicked();
    void on_pushButton_showDetails_clicked();

protected slots:
    void keyPressEvent(QKeyEvent* event) override;

public slots:
    void accept() override;
    void reject() override;
    // Takes effect at the next loading; an open dialog keeps what it shows.
    void onSendShowDynReflexSuppr(bool show) { bShowDynReflexSuppr = show; }

    // The two checks of OK: true from modCamHasFlash means go on, true from
    // modFlashIsNotSyncGroup1 means stop.
    bool modCamHasFlash() const;
    bool modFlashIsNotSyncGroup1() const;

private:
    void update_from_module();
    void addLostCams(int num_lost_cams);
    void enable_lct_widget(bool on);
    void buildCompactPanel();
    void buildCameraTable();

    // Camera table variant: loading.
    void fillCameraTable();

    // All-in-one variant: the panel and its two consistency checks.
    void loadCompactPanel();
    void lct_check_current_flash_intensity_for_all();
    void lct_check_static_reflex_suppression();

    // Writes of the table's cells to the controller (live path, OK and Cancel).
    void saveSettingsToController();
    bool saveRowToController(int row, CameraWdg* page);
    void saveSettingsToBriskbox();
    void writeModulatedFlashToContoller(int row);
    void writeSyncGroupToController(int row);
    void updateAllSyncGroupValues();
    void writeCameraModeToController(int row, QString mode);
    void writeCameraFlashIntensityToContoller(int row);
    void writeMarkerModeToController(int row, const CameraWdg* page);
    void writeMarkerMaxNumberToController(int row);
    void write_marker_max_min_size_to_controller(int row);
    void writeMarkerMaxSizeToController(int row);
    void writeMarkerMinSizeToController(int row);
    void writeMarkerThresholdToController(int row);
    void writeSensorGainToController(int row);
    // A value the camera confirms it has ("... c%02d" asked, "... c%02d %f" written), past the gate.
    void writeSupportedValue(int row, bool gate, const char* has, const char* set, int column, const char* error);
    void writeExposuretimeToController(int row);

    // The restore passes of Cancel.
    bool restoreCameraModes();
    void restoreSyncGroup(int row, const CameraWdg* page);
    // One of the camera values that were read at opening: written back when it changed.
    void restoreValue(int row, bool has, double now, double old, const char* command, const char* error);

    IOManager* cm;
    BackendVersions* beVers;
    QVector<CameraWdg*> cams; // one page per row of the table, present or missing
    OverviewWdg* overview = nullptr;
    ChangeTrackingStandardItemModel* model = nullptr;
    bool bShowDynReflexSuppr = false;
    CameraSettingsMessagereceiver* messageReceiver = nullptr;
    int m_lct_flash_intensity = 0;
    bool m_bStaticReflexskip = false;
    bool m_lct_modulated_flash = false;
    int m_lct_num_cam = 0;
    bool m_is_config_locked = false;
    QIcon m_icon_lock;
    QWidget* m_parent;
    QIcon m_icon_ok;
    QIcon m_icon_cross;
    bool bUserAction = false;
};

#endif // CAMERASETTINGSDLG_H
