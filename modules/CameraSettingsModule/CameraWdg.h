#ifndef CAMERAWDG_H
#define CAMERAWDG_H

#include "ui_camerawidget.h"

#include "ChangeTrackingStandardItemModel.h"
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"

#include <QDialog>
#include <QTimer>

class BackendVersions;
class IOManager;

// The detail page of one camera. It reads the camera completely from the controller
// (update_from_module), hands its values to the dialog, which copies them into the
// camera's row of the shared camera table, and from then on writes the operator's
// changes into that row. The few settings that take effect at once (display
// orientation, intensities and mode, camera mode, default buttons, automatic
// exposure) it sends to the controller itself.
class CameraWdg : public QDialog, private Ui::CameraWidget
{
    Q_OBJECT

public:
    enum MarkerMode {
        MARKER_MODE_DEFAULT = 0,
        MARKER_MODE_ACCURATE = 1,
        MARKER_MODE_FAST = 2
    };

    CameraWdg(IOManager* cm, QWidget* parent, BackendVersions* beVers);

    // The shared table; must be set before update_from_module, because the slots that
    // run while the page fills its combo boxes write into it.
    void setModel(ChangeTrackingStandardItemModel* table) { model = table; }
    // Reads camera cam + 1 from the controller into a new page (each opening builds new ones).
    void update_from_module(int cam);

    int getSliderSingleStep(int maximum) const;
    // The picture of a camera model (":/images/..."): by the model id's high byte, for
    // some models also by its low byte or by the serial's last letter.
    static QString modelPicture(int modelId, const QString& serial);

    void showDetails(bool show);
    void setVisibleDynReflexSuppr(bool show);
    QString getCameraModeDesc(int cam, const QString& key) const
        { return num_camera_modes > 1 ? CameraSettings::cameraModeDescription(cm, cam + 1, key) : QString(); }
    // The marker mode of its word ("accurate", "fast"); any other word is the default mode.
    static MarkerMode markerModeOfWord(const QString& word);

    // Send their setting at once; 0 on success or nothing to do, -1 after a failed write
    // (the member keeps its value, so the same call tries again).
    int setCameraOrientation(int orientation);
    int setDisplayIntensity(int percent);
    int setDisplayRingIntensity(int percent);
    int setDisplayMode(const QString& settingId);
    void setFlash(int value) { spinBox->setValue(value); }

    int getFlash() const { return spinBox->value(); }
    int getOldFlash() const { return flash; }
    int getMaxFlash() const { return max_flash; }
    QString getModel() const { return cam_model; }
    QString getSerial() const { return serial; }
    int getHasModulatedFlash() const { return hasModulatedFlash; }
    bool isActiveModulatedFlash() const { return active_mod_flash; }
    int getHasStaticReflexSkip() const { return hasStaticReflexSkip; }
    bool isActiveStaticReflexSkip() const { return active_static_reflex_skip; }
    int getHasDynamicReflexSkip() const { return hasDynamicReflexSkip; }
    bool isActiveDynamicReflexSkip() const { return active_dynamic_reflex_skip; }
    QString getHasRoomcal() const { return bHasRoomcal ? QStringLiteral("yes") : QStringLiteral("no"); }
    bool getHasMarkerThreshold() const { return bHasMarkerThreshold; }
    double getMarkerThreshold() const { return dMarkerThreshold; }
    double getMarkerThresholdOld() const { return dMarkerThreshold_old; }
    bool getHasSensorGain() const { return bHasSensorGain; }
    double getSensorGain() const { return dSensorGain; }
    double getSensorGainOld() const { return dSensorGain_old; }
    bool getHasExposureTime() const { return bHasExposureTime; }
    double getExposureTime() const { return dExposureTimeMs; }
    double getExposureTimeOld() const { return dExposureTimeMsOld; }
    bool getIsAutoExposureTime() const { return bIsAutoExposureTime; }
    bool getIsAutoExposureTimeOld() const { return bIsAutoExposureTimeOld; }

    MarkerMode getMarkerMode() const { return markerMode; }
    bool hasMarkerModeAccurate() const { return bHasMarkerModeAccurate; }
    bool hasMarkerModeFast() const { return bHasMarkerModeFast; }
    int getMarkerMaxNumber() const { return iMarkerMaxNumber; }
    double getMarkerMaxSize() const { return dMarkerMaxSize; }
    double getMarkerMaxSizePercent() const { return dMarkerMaxSizePercent; }
    double getMarkerMinSize() const { return dMarkerMinSize; }
    double getMarkerSizeLimit() const { return dMarkerSizeLimit; }
    double getMarkerSizeLimitPercent() const { return dMarkerSizeLimitPercent; }
    QString getSyncGroup() const { return sSyncGroup; }
    QString getOldSyncGroup() const { return oldSyncGroup; }
    QString getCascadeInfos() const { return sCascadeInfos; }
    double getChipSize() const { return dChipsize; }
    bool getHasCameraMode() const { return num_camera_modes > 1; }
    QString getCameraMode() const { return sCameraMode; }
    QString getCameraModeOld() const { return sCameraModeOld; }
    int getCameraOrientation() const { return camera_orientation; }
    bool getHasDisplayIntensity() const { return bHasDisplayIntensity; }
    int getDisplayIntensity() const { return iDisplayIntensity; }
    bool getHasDisplayRingIntensity() const { return hasDisplayRingIntensity; }
    int getDisplayRingIntensity() const { return displayRingIntensity; }
    bool getHasDisplayMode() const { return bHasDisplayMode; }
    QString getDisplayMode() const { return sDisplayMode; }
    bool isDisplayModeSupported(const QString& id) const { return displayModesSupported.contains(id); }

signals:
    void onEscapePressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private slots:
    void on_horizontalSlider_valueChanged(int value) { setOwnCell(CameraTable::FlashIntensity, value); }
    void on_checkBox_modulated_toggled(bool checked) { setOwnCell(CameraTable::ModFlash, checked); }
    void on_checkBox_static_reflex_skip_toggled(bool on) { setOwnCell(CameraTable::StaticReflexSuppr, on); }
    void on_checkBox_dynamic_reflex_skip_toggled(bool on) { setOwnCell(CameraTable::DynReflexSuppr, on); }
    void on_checkBox_camera_orientation_toggled(bool checked);
    void on_comboBox_markerMode_currentIndexChanged(int index);
    void on_spinBox_markerMaxNumber_valueChanged(int value) { setOwnCell(CameraTable::MarkerMaxNumber, value); }
    void on_doubleSpinBox_markerMaxSize_valueChanged(double percent);
    void on_doubleSpinBox_markerMinSize_valueChanged(double pixels);
    void on_comboBox_syncGroup_currentIndexChanged(QString text);
    void on_horizontalSlider_displayIntensity_valueChanged(int value);
    void on_horizontalSlider_displayRingIntensity_valueChanged(int value);
    void on_comboBox_displayMode_currentIndexChanged(int index);
    void on_comboBox_cameraMode_currentIndexChanged(int index);
    void on_horizontalSlider_markerThreshold_valueChanged(int value);
    void on_horizontalSlider_sensorGain_valueChanged(int value);
    void on_horizontalSlider_exposureTime_valueChanged(int value);
    void on_checkBox_autoExposureCtrl_clicked(bool checked);
    void on_pushButton_markerThresholdDefault_clicked();
    void on_pushButton_exposureTimeDefault_clicked();
    void on_pushButton_defaultSensorGain_clicked();

    void onSendDisplayIntensityCommand();
    void onSendDisplayRingIntensityCommand() { setDisplayRingIntensity(horizontalSlider_displayRingIntensity->value()); }

private:
    // Writes a cell of this camera's row of the table; nothing without a table.
    void setOwnCell(int column, const QVariant& value)
        { CameraSettings::setCell(model, cam_idx, column, value); }
    // The first steps of loading, for camera number n: flash range and value, identity
    // (serial, model, version, focal length, picture), the yes/no switches.
    void loadFlash(int n);
    void loadIdentity(int n);
    void loadSwitches(int n);
    void handleSyncGroup(int cam);
    void handleModulatedFlash(int cam);
    void handleMarkerMode(int cam);
    void handleMarkerMaxNumber(int cam);
    void handleChipSize(int cam);
    void handleMarkerMaxSizeLimit(int cam);
    void handleMarkerMaxSize(int cam);
    void handleMarkerMinSize(int cam);
    void handleCascadedSystem(int cam);
    void handleCameraMode(int cam);
    void handleDisplayIntensity(int cam);
    void handleDisplayMode(int cam);
    // Adds the display settings that camera n has to the combo box; returns their number.
    int addDisplaySettingItems(int n, int settings);
    void handleDisplayRingIntensity(int cam);
    void handleHasRoomcal(int cam);
    void handleHasMarkerThreshold(int cam);
    void handleMarkerThreshold(int cam);
    void handleHasSensorGain(int cam);
    void handleSensorGain(int cam);
    void handleHasExposureTime(int cam);
    void handleExposureTime(int cam);

    void enable_disable_exposureControls();
    void enableExposureTime(bool on)
        { CameraSettings::setWidgetsEnabled({horizontalSlider_exposureTime, label_exposureTimeUs,
                                             pushButton_exposureTimeDefault}, on); }
    void updateAutoExposuretimeInBriskbox(int cam, bool autoOn);
    void updateExposuretimeInBriskbox(int cam, double ms);
    void writeExposuretimeToController(int cam);
    void setModusForCamToController(int cam, QString modeKey);
    void updateAllDisplayIntensityValues();
    void adjustControlsWidth();

    // The row of the all-in-one partner camera, or -1 when this page has none.
    int briskboxPartnerRow(int cam) const;

    IOManager* cm;
    BackendVersions* beVers;
    QTimer timerDisplayIntensity;
    QTimer timerDisplayRingIntensity;

public:
    // The dialog reads the values below directly when it fills the table and when
    // Cancel restores what was read at loading.
    // Loaded before use; zero until then so that an unloaded page reads as "nothing".
    int flash = 0;
    int max_flash = 0;
    int maxMaxFlash = 0;
    bool isFlashLowPower = false;
    int hasModulatedFlash = 0;
    bool active_mod_flash = false;
    int hasStaticReflexSkip = 0;
    bool active_static_reflex_skip = false;
    int hasDynamicReflexSkip = 0;
    bool active_dynamic_reflex_skip = false;
    int camera_orientation = 0;
    int m_cameraOrientationOld = 0;
    bool bHasMarkerModeAccurate = false;
    bool bHasMarkerModeFast = false;
    MarkerMode markerMode = MARKER_MODE_DEFAULT;
    int iMarkerMaxNumber = 0;
    double dMarkerSizeLimit = 0.0;
    double dMarkerSizeLimitPercent = 0.15;
    double dMarkerMaxSize = 0.0;
    double dMarkerMaxSizePercent = 0.0;
    double dMarkerMinSize = 0.0;
    QString sSyncGroup;
    QString oldSyncGroup;
    QString sCascadeInfos;
    int iModelSlave = -1;
    QString cam_model;
    QString serial;
    int cam_idx = -1;
    ChangeTrackingStandardItemModel* model = nullptr;
    bool m_user_action = false;
    bool m_loading = false; // update_from_module is reading the camera
    double dChipsize = 5.78;
    int num_camera_modes = 0;
    QString sCameraMode;
    QString sCameraModeOld;
    bool bHasDisplayIntensity = false;
    int iDisplayIntensity = 0;
    int oldDisplayIntensity = 0;
    bool hasDisplayRingIntensity = false;
    int displayRingIntensity = 0;
    int oldDisplayRingIntensity = 0;
    bool bHasDisplayMode = false;
    QStringList displayModesSupported;
    QString sDisplayMode;
    QString m_displayModeOld;
    bool bHasRoomcal = true;
    bool bHasMarkerThreshold = false;
    double dMarkerThreshold = 0.1;
    double dMarkerThreshold_old = 0.1;
    bool bHasSensorGain = false;
    double dSensorGain = 1.0;
    double dSensorGain_old = 1.0;
    bool bHasExposureTime = false;
    double dExposureTimeMs = 0.0;
    double dExposureTimeMsController = 0.0;
    double dExposureTimeMsOld = 0.0;
    bool bIsAutoExposureTime = false;
    bool bIsAutoExposureTimeOld = false;
};

#endif // CAMERAWDG_H
