#include "CameraWdg.h"

#include "cameracommands.h"
#include "camerasettingshelpers.h"
#include "controllervalues.h"
#include "BackendVersions.h"
#include "programmaticchange.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

using namespace CameraSettings;
namespace Col = CameraTable;
namespace Cmd = CameraCommand;

namespace {

// A default button: the setting's "default" written, its value read back onto the slider.
struct DefaultButton {
    const char* setWord; // "... c%02d %s", given "default"
    const char* read;
    const char* error;
    double fallback; // shown when the value cannot be read back
    int factor;      // slider steps per unit
    QSlider* slider;
};

void restoreDefault(IOManager* cm, int n, const DefaultButton& button, double* value)
{
    if (cm->setParameter(button.setWord, n, "default") != 0)
        CameraSettings::reportError(cm, QString::fromLatin1(button.error));
    if (cm->getDouble(value, button.read, n) != 0)
        *value = button.fallback;
    button.slider->setValue(scaledToInt(*value, button.factor));
}

// The display and ring display rows load alike: support asked past the gate, then the
// value read onto the slider. A row without the feature is hidden where it has a spacer
// to collapse, locked otherwise.
struct DisplayIntensityRow {
    bool gate;
    const char* hasCommand;
    const char* hasError;
    const char* readCommand;
    const char* readError;
    QWidget* label;
    QSlider* slider;
    QWidget* percentLabel;
    QSpacerItem* spacer;
    QLayout* layout;
};

// True when camera n has the row's feature; *percent then holds its value.
bool loadDisplayIntensityRow(IOManager* cm, int n, const DisplayIntensityRow& row, int* percent)
{
    const auto lock = [&row] { setWidgetsEnabled({row.label, row.slider, row.percentLabel}, false); };
    ValueBuffer has = {};
    if (row.gate && cm->getString(has, row.hasCommand, n) != 0) {
        CameraSettings::reportError(cm, QString::fromLatin1(row.hasError));
        lock();
    }
    if (!isYes(has)) {
        if (row.spacer) {
            setWidgetsVisible({row.label, row.slider, row.percentLabel}, false);
            CameraSettings::collapseSpacer(row.spacer, row.layout);
        } else {
            lock();
        }
        return false;
    }
    // A fraction on the wire, percent on the slider; a failed read keeps the 0, and the
    // controls are disabled.
    double fraction = 0.0;
    if (cm->getDouble(&fraction, row.readCommand, n) != 0) {
        CameraSettings::reportError(cm, QString::fromLatin1(row.readError));
        lock();
    }
    *percent = scaledToInt(fraction, 100);
    row.slider->setValue(*percent);
    return true;
}

} // namespace

CameraWdg::CameraWdg(IOManager* cm, QWidget* parent, BackendVersions* beVers)
    : QDialog(parent, Qt::WindowFlags()),
      cm(cm),
      beVers(beVers)
{
    setupUi(this);
    setPalette(QPalette());

    showDetails(false);

    // Escape on a page ends the whole dialog as Cancel; only a dialog parent can do that.
    if (QDialog* dialog = qobject_cast<QDialog*>(parent))
        connect(this, &CameraWdg::onEscapePressed, dialog, &QDialog::reject);

    setUpDebounceTimer(&timerDisplayIntensity, this, "timerDisplayIntensity", [this] { onSendDisplayIntensityCommand(); });
    setUpDebounceTimer(&timerDisplayRingIntensity, this, "timerDisplayRingIntensity",
                       [this] { onSendDisplayRingIntensityCommand(); });
}

int CameraWdg::getSliderSingleStep(int maximum) const
{
    // {below this maximum, step}: about ten steps across the slider.
    static const int steps[][2] = {{11, 1}, {21, 2}, {51, 5}, {101, 10}, {201, 20}, {501, 50}};
    for (const auto& step : steps) {
        if (maximum < step[0])
            return step[1];
    }
    return 100;
}

// Small helpers

QString CameraWdg::modelPicture(int modelId, const QString& serialText)
{
    // The all-in-one cameras come as a left and a right one; the serial says which.
    const bool left = serialText.endsWith(QLatin1Char('L'), Qt::CaseSensitive);
    switch (modelId & 0xFF00) {
    case 0x0100: return QStringLiteral(":/images/lumacam1_transparent.png");
    case 0x0200: return QStringLiteral(":/images/lumacam2_transparent.png");
    case 0x0300: return QStringLiteral(":/images/lumacam3_transparent.png");
    case 0x0400:
        switch (modelId & 0x00FF) {
        case 1: return QStringLiteral(":/images/lumacam_kp_s0_transparent.png");
        case 3: return QStringLiteral(":/images/lumacam_kpc_transparent.png");
        default: return QStringLiteral(":/images/lumacam_kp_s1_transparent.png");
        }
    case 0x0500:
    case 0x0600: return QStringLiteral(":/images/lumacam_vx1_transparent.png");
    case 0x0800: return QStringLiteral(":/images/lumacam_kpe_transparent.png");
    case 0x0900: return QStringLiteral(":/images/lumacam5_transparent.png");
    case 0x0A00: return QStringLiteral(":/images/lumacam5_c_transparent.png");
    case 0x0B00:
        return left ? QStringLiteral(":/images/briskbox3_left_transparent.png")
                    : QStringLiteral(":/images/briskbox3_right_transparent.png");
    case 0x0C00: return QStringLiteral(":/images/lumacam6m_transparent.png");
    case 0x0D00:
        return left ? QStringLiteral(":/images/briskbox3m_left_transparent.png")
                    : QStringLiteral(":/images/briskbox3m_right_transparent.png");
    case 0x0E00: return QStringLiteral(":/images/LC9-30_transparent.png");
    default: return QStringLiteral(":/images/unknown_transparent.png");
    }
}

// Loading

void CameraWdg::update_from_module(int cam)
{
    const QScopedValueRollback<bool> loading(m_loading, true);
    cam_idx = cam;
    const int n = cam + 1;
    // The page's controls act as the operator's from here on, except in the steps that
    // fill them as a ProgrammaticChange.
    m_user_action = true;
    loadFlash(n);
    loadIdentity(n);
    loadSwitches(n);
    handleSyncGroup(cam);
    oldSyncGroup = sSyncGroup;
    handleModulatedFlash(cam);
    // The size steps work in percent of the chip, so the chip size comes first.
    handleMarkerMode(cam);
    handleMarkerMaxNumber(cam);
    handleChipSize(cam);
    handleMarkerMaxSizeLimit(cam);
    handleMarkerMaxSize(cam);
    handleMarkerMinSize(cam);
    handleCascadedSystem(cam);
    handleCameraMode(cam);
    handleDisplayIntensity(cam);
    oldDisplayIntensity = iDisplayIntensity;
    handleDisplayMode(cam);
    m_displayModeOld = sDisplayMode;
    handleDisplayRingIntensity(cam);
    oldDisplayRingIntensity = displayRingIntensity;
    handleHasRoomcal(cam);
    handleHasMarkerThreshold(cam);
    handleMarkerThreshold(cam);
    handleHasSensorGain(cam);
    handleSensorGain(cam);
    handleHasExposureTime(cam);
    // Loading: handleExposureTime records the exposure as the one to restore on Cancel.
    const ProgrammaticChange filling(m_user_action);
    handleExposureTime(cam);
}

void CameraWdg::loadFlash(int n)
{
    cm->getInt(&max_flash, Cmd::MaxFlashIntensity, n);
    if (protocolAtLeast(beVers, 1, 27)) {
        cm->getInt(&maxMaxFlash, "camera max_max_flash_intensity c%02d", n);
        isFlashLowPower = answersYes(cm, "camera is_flash_low_power c%02d", n);
    } else {
        maxMaxFlash = max_flash;
    }

    CameraSettings::setSliderMaximum(horizontalSlider, max_flash);
    horizontalSlider->setSingleStep(getSliderSingleStep(maxMaxFlash));
    horizontalSlider->setPageStep(getSliderSingleStep(maxMaxFlash));
    int share = 0;
    // The slider covers the share of the row that the reduced maximum has of the full
    // one, so the operator sees how much the power supply takes away; a negative
    // maximum has no share of the row and gets no stretch.
    if (maxMaxFlash > max_flash && CameraSettings::percentShare(max_flash, maxMaxFlash, &share)) {
        hBoxLayout_11->setStretchFactor(horizontalSlider, share);
        hBoxLayout_11->insertStretch(3, 100 - share);
    }
    spinBox->setMaximum(max_flash);
    if (max_flash < 1)
        setWidgetsEnabled({horizontalSlider, spinBox}, false);

    cm->getInt(&flash, Cmd::FlashIntensity, n);
    horizontalSlider->setValue(flash);
    spinBox->setValue(flash);

    label_lowPower->setVisible(isFlashLowPower);
    if (isFlashLowPower)
        label_lowPower->setText(QStringLiteral(
            "<b><font color=red>Reduced flash intensity because of limited power supply!</font></b>"));
    else
        CameraSettings::collapseSpacer(horizontalSpacer_lowPower, horizontalLayout_lowPower);
}

void CameraWdg::loadIdentity(int n)
{
    LineBuffer identityLine = {};
    cm->sendCommand(identityLine, Cmd::Identity, n);
    const QString identity = QString::fromLatin1(identityLine).section(QLatin1Char(' '), 5, 6);
    const QString modelWord = identity.section(QLatin1Char(' '), 0, 0);

    ValueBuffer version = {};
    cm->getString(version, "camera version c%02d", n);
    label_version->setText(QString::fromLatin1(version));

    double focal = 0.0;
    cm->getDouble(&focal, "camera focal_length c%02d", n);
    label_focal->setText(QString::number(focal, 'f', 2));

    serial = identity.section(QLatin1Char(' '), 1, 1);
    const QString lowerIdentity = identity.toLower();
    if (lowerIdentity.startsWith(QLatin1String("0x0b")) || lowerIdentity.startsWith(QLatin1String("0x0d"))) {
        // The all-in-one cameras share one serial; the controller describes each one.
        ValueBuffer serialDesc = {};
        if (protocolAtLeast(beVers, 1, 23))
            cm->getString(serialDesc, Cmd::SerialDesc, identity.toLatin1().constData());
        serial = withoutDoubleQuotes(QString::fromLatin1(serialDesc));
    }
    label_serial->setText(serial);

    LineBuffer modelLine = {};
    cm->sendCommand(modelLine, "quarvo2 get camera model_desc %s", modelWord.toLatin1().constData());
    // The value of a single-valued reply line is its word 5.
    cam_model = withoutDoubleQuotes(QString::fromLatin1(modelLine).section(QLatin1Char(' '), 5, 5));
    label_model->setText(cam_model);
    // A model word that is no hexadecimal number reads as 0, the unknown model.
    label_image->setPixmap(QPixmap(modelPicture(modelWord.toInt(nullptr, 16), serial)));
}

void CameraWdg::loadSwitches(int n)
{
    // The form's boxes start unchecked, so only a box whose switch is on changes here.
    active_mod_flash = answersYes(cm, Cmd::ModulatedFlash, n);
    checkBox_modulated->setChecked(active_mod_flash);

    hasStaticReflexSkip = answersYes(cm, Cmd::HasStaticReflexSkip, n) ? 1 : 0;
    active_static_reflex_skip = hasStaticReflexSkip == 1 && answersYes(cm, Cmd::StaticReflexSkip, n);
    checkBox_static_reflex_skip->setVisible(hasStaticReflexSkip == 1);
    checkBox_static_reflex_skip->setChecked(active_static_reflex_skip);

    hasDynamicReflexSkip = answersYes(cm, Cmd::HasDynamicReflexSkip, n) ? 1 : 0;
    active_dynamic_reflex_skip = hasDynamicReflexSkip == 1 && answersYes(cm, "camera dynamic_reflex_skip c%02d", n);
    checkBox_dynamic_reflex_skip->setChecked(active_dynamic_reflex_skip);
    // Without it on, shown again only when the host asks for the dynamic suppression controls.
    checkBox_dynamic_reflex_skip->setVisible(active_dynamic_reflex_skip);

    camera_orientation = answersYes(cm, "camera display_upside_down c%02d", n) ? 1 : 0;
    checkBox_camera_orientation->setChecked(camera_orientation == 1);
    m_cameraOrientationOld = camera_orientation;
}

void CameraWdg::handleSyncGroup(int cam)
{
    const int n = cam + 1;
    if (!protocolAtLeast(beVers, 1, 6) || !answersYes(cm, Cmd::HasSyncGroup, n)) {
        setWidgetsVisible({comboBox_syncGroup, label_syncGroup}, false);
        return;
    }

    int channels = 0; // none without a sync card or its count
    if (answersYes(cm, "synccard available") && cm->getInt(&channels, "synccard number_of_channels d01") != 0)
        reportError(cm, "Error: Unable to get number of channels from synccard");
    // A count beyond what the channel word can number is no real sync card.
    channels = boundedCount(channels, CameraSettings::MaxSyncChannels);
    for (int i = 1; i <= channels; ++i)
        comboBox_syncGroup->addItem(CameraSettings::channelText(i), CameraSettings::channelListWord(i));

    // No group, an unreadable one (left empty) and "none" all show channel 1, the first item.
    ValueBuffer group = {};
    cm->getString(group, Cmd::SyncGroup, n);
    sSyncGroup = channelTextFromSyncGroupValue(QString::fromLatin1(group));
    selectExactText(comboBox_syncGroup, sSyncGroup);
}

void CameraWdg::handleModulatedFlash(int cam)
{
    hasModulatedFlash = answersYes(cm, "camera has_modulated_flash c%02d", cam + 1) ? 1 : 0;
    checkBox_modulated->setVisible(hasModulatedFlash == 1);
}

void CameraWdg::handleMarkerMode(int cam)
{
    const int n = cam + 1;
    bHasMarkerModeAccurate = answersYes(cm, Cmd::HasMarkerModeAccurate, n);
    bHasMarkerModeFast = answersYes(cm, Cmd::HasMarkerModeFast, n);

    if (!bHasMarkerModeAccurate && !bHasMarkerModeFast) {
        setWidgetsVisible({label_markerMode, comboBox_markerMode}, false);
        return;
    }

    comboBox_markerMode->addItem(QStringLiteral("default"), int(MARKER_MODE_DEFAULT));
    if (bHasMarkerModeAccurate)
        comboBox_markerMode->addItem(QStringLiteral("accurate"), int(MARKER_MODE_ACCURATE));
    if (bHasMarkerModeFast)
        comboBox_markerMode->addItem(QStringLiteral("fast"), int(MARKER_MODE_FAST));

    ValueBuffer mode = {};
    cm->getString(mode, "camera marker_mode c%02d", n);
    markerMode = markerModeOfWord(QString::fromLatin1(mode));
    // A mode the camera does not offer has no item: nothing is selected then.
    comboBox_markerMode->setCurrentIndex(comboBox_markerMode->findData(int(markerMode)));
}

CameraWdg::MarkerMode CameraWdg::markerModeOfWord(const QString& word)
{
    if (word == QLatin1String("accurate"))
        return MARKER_MODE_ACCURATE;
    if (word == QLatin1String("fast"))
        return MARKER_MODE_FAST;
    return MARKER_MODE_DEFAULT;
}

void CameraWdg::handleMarkerMaxNumber(int cam)
{
    cm->getInt(&iMarkerMaxNumber, "camera marker_max_number c%02d", cam + 1);
    // 0 means "no limit" on the controller; the spin box shows its largest value then.
    spinBox_markerMaxNumber->setValue(iMarkerMaxNumber == 0 ? 400 : iMarkerMaxNumber);
}

void CameraWdg::handleChipSize(int cam)
{
    // A side that cannot be read, or is not asked below 1.11, keeps its usual size: a
    // failed get leaves it as it was. Both usual sides give the usual chip size 5.78.
    int vertical = 498;
    int horizontal = 658;
    if (protocolAtLeast(beVers, 1, 11)) {
        cm->getInt(&vertical, "camera sensor_pixel_vertical c%02d", cam + 1);
        cm->getInt(&horizontal, "camera sensor_pixel_horizontal c%02d", cam + 1);
    }
    // Summed in 64 bits: two sides near INT_MAX still give their mean.
    dChipsize = ((qint64(vertical) + horizontal) / 2) * 0.01;
}

void CameraWdg::handleMarkerMaxSizeLimit(int cam)
{
    dMarkerSizeLimit = 30.0; // kept by a failed read
    if (protocolAtLeast(beVers, 1, 10))
        cm->getDouble(&dMarkerSizeLimit, "camera limit marker_max_size c%02d", cam + 1);
    if (dChipsize > 0)
        dMarkerSizeLimitPercent = dMarkerSizeLimit / dChipsize;

    const ProgrammaticChange limiting(m_user_action);
    doubleSpinBox_markerMinSize->setMaximum(dMarkerSizeLimit);
    doubleSpinBox_markerMaxSize->setMaximum(dMarkerSizeLimitPercent);
}

void CameraWdg::handleMarkerMaxSize(int cam)
{
    if (cm->getDouble(&dMarkerMaxSize, "camera marker_max_size c%02d", cam + 1) != 0 || dMarkerMaxSize == 0.0)
        dMarkerMaxSize = 30.0;
    dMarkerMaxSizePercent = dChipsize > 0 ? dMarkerMaxSize / dChipsize : 0.1;
    doubleSpinBox_markerMaxSize->setValue(dMarkerMaxSizePercent);
}

void CameraWdg::handleMarkerMinSize(int cam)
{
    cm->getDouble(&dMarkerMinSize, Cmd::MarkerMinSize, cam + 1);
    doubleSpinBox_markerMinSize->setValue(dMarkerMinSize == 0.0 ? 1.0 : dMarkerMinSize);
}

void CameraWdg::handleCascadedSystem(int cam)
{
    int slaves = 0;
    if (!protocolAtLeast(beVers, 1, 7) || cm->getInt(&slaves, "cascade number_of_connected_slaves") != 0
        || slaves <= 0) {
        setWidgetsVisible({label_cascadedSystem, label_cascadedSystem_desc}, false);
        return;
    }

    ValueBuffer slave = {};
    const bool read = cm->getString(slave, "camera cascade_slave c%02d", cam + 1) == 0;
    if (!read || qstrcmp(slave, "none") == 0) {
        sCascadeInfos = read ? QStringLiteral("master") : QStringLiteral("unknown");
        label_cascadedSystem_desc->setText(read ? tr("master of Cascaded System") : tr("unknown (master/slave)"));
        return;
    }

    ValueBuffer controllerInfo = {};
    cm->getString(controllerInfo, "cascade connected_slave_controller %s", slave);
    const QString controllerWord = QString::fromLatin1(controllerInfo).section(QLatin1Char(' '), 1, 1);
    ValueBuffer host = {};
    cm->getString(host, "system hostname_slave %s", slave);
    sCascadeInfos = QStringLiteral("slave %1 %2").arg(QString::fromLatin1(slave), controllerWord);
    label_cascadedSystem_desc->setText(
        tr("slave of Cascaded System (%1 %2)").arg(QString::fromLatin1(host), controllerWord));
    cm->getInt(&iModelSlave, "system model_slave %s", slave); // a failed read keeps -1, no model
}

void CameraWdg::handleCameraMode(int cam)
{
    const int n = cam + 1;
    if (!protocolAtLeast(beVers, 1, 15) || cm->getInt(&num_camera_modes, Cmd::NumberOfModes, n) != 0)
        num_camera_modes = 0;
    // Every mode costs a read and an item: more than the mode word numbers is none real.
    num_camera_modes = boundedCount(num_camera_modes, CameraSettings::MaxCameraModes);
    if (num_camera_modes < 2) {
        setWidgetsEnabled({label_cameraMode, comboBox_cameraMode}, false);
        return;
    }

    addCameraModeItems(comboBox_cameraMode, cm, n, num_camera_modes);

    // A mode that cannot be read stays empty, which no item's key is: none is selected.
    ValueBuffer mode = {};
    cm->getString(mode, "camera mode c%02d", n);
    comboBox_cameraMode->setCurrentIndex(comboBox_cameraMode->findData(QString::fromLatin1(mode)));
    sCameraMode = comboBox_cameraMode->currentData().toString();
    sCameraModeOld = sCameraMode;
}

void CameraWdg::handleDisplayIntensity(int cam)
{
    bHasDisplayIntensity = loadDisplayIntensityRow(cm, cam + 1,
        {protocolAtLeast(beVers, 1, 15), "camera has_display_intensity c%02d",
         "Error: Unable to get info whether camera can display intensity", Cmd::DisplayIntensity,
         "Error: Unable to get info display intensity", label_displayIntensity, horizontalSlider_displayIntensity,
         label_displayIntensityPercent, nullptr, nullptr},
        &iDisplayIntensity);
}

void CameraWdg::handleDisplayRingIntensity(int cam)
{
    hasDisplayRingIntensity = loadDisplayIntensityRow(cm, cam + 1,
        {protocolAtLeast(beVers, 1, 27), "camera has_display_ring_intensity c%02d",
         "Error: Unable to get info if camera can display ring intensity", "camera display_ring_intensity c%02d",
         "Error: Unable to get ring display intensity", label_displayRingIntensity,
         horizontalSlider_displayRingIntensity, label_displayRingIntensityPercent,
         horizontalSpacer_displayRingIntensity, horizontalLayout_displayRingIntensity},
        &displayRingIntensity);
}

void CameraWdg::handleDisplayMode(int cam)
{
    const int n = cam + 1;
    const bool gate = protocolAtLeast(beVers, 1, 15);
    int settings = 0;
    const bool counted = gate && cm->getInt(&settings, Cmd::NumberOfDisplaySettings) == 0;
    if (gate && !counted)
        reportError(cm, "Error: Unable to get info number of display settings");
    // A choice needs two settings at least.
    bHasDisplayMode = counted && addDisplaySettingItems(n, settings) >= 2;
    if (!bHasDisplayMode) {
        setWidgetsEnabled({label_displayMode, comboBox_displayMode}, false);
        comboBox_displayMode->setCurrentIndex(-1);
        return;
    }

    ValueBuffer current = {};
    if (cm->getString(current, "camera display_setting c%02d", n) != 0) {
        comboBox_displayMode->setCurrentIndex(-1);
    } else {
        // Selecting runs the slot before sDisplayMode holds the value, so a camera whose
        // setting is not the first item gets it written back once; the restore on
        // Cancel relies on the controller having seen that write.
        comboBox_displayMode->setCurrentIndex(comboBox_displayMode->findData(QString::fromLatin1(current)));
        sDisplayMode = QString::fromLatin1(current);
    }
}

int CameraWdg::addDisplaySettingItems(int n, int settings)
{
    // Every setting costs up to three reads: more than the setting word numbers is none real.
    settings = boundedCount(settings, CameraSettings::MaxDisplaySettings);
    int count = 0;
    for (int t = 1; t <= settings; ++t) {
        ValueBuffer id = {};
        if (cm->getString(id, Cmd::DisplaySettingId, t) != 0) {
            reportError(cm, "Error: Unable to get info display setting");
            continue;
        }
        ValueBuffer has = {};
        if (cm->getString(has, Cmd::HasDisplaySetting, n, id) != 0) {
            reportError(cm, "Error: Unable to get info display has setting");
            continue;
        }
        if (!isYes(has))
            continue;
        const QString settingId = QString::fromLatin1(id);
        displayModesSupported.append(settingId);
        ValueBuffer desc = {};
        if (cm->getString(desc, Cmd::DisplaySettingDesc, id) != 0) {
            reportError(cm, "Error: Unable to get info display setting description");
            continue;
        }
        comboBox_displayMode->addItem(withoutDoubleQuotes(QString::fromLatin1(desc)), settingId);
        ++count;
    }

    return count;
}

void CameraWdg::handleHasRoomcal(int cam)
{
    if (!protocolAtLeast(beVers, 1, 18))
        return;
    ValueBuffer room = {};
    cm->getString(room, "tracking has_room c%02d", cam + 1);
    bHasRoomcal = qstrcmp(room, "no") != 0;
}

void CameraWdg::handleHasMarkerThreshold(int cam)
{
    bHasMarkerThreshold = protocolAtLeast(beVers, 1, 24) && answersYes(cm, Cmd::HasMarkerThreshold, cam + 1);
}

void CameraWdg::handleMarkerThreshold(int cam)
{
    if (!protocolAtLeast(beVers, 1, 24))
        return;
    cm->getDouble(&dMarkerThreshold, Cmd::MarkerThreshold, cam + 1); // a failed read keeps 0.1
    dMarkerThreshold_old = dMarkerThreshold;
}

void CameraWdg::handleHasSensorGain(int cam)
{
    bHasSensorGain = protocolAtLeast(beVers, 1, 27) && answersYes(cm, Cmd::HasSensorGain, cam + 1);
}

void CameraWdg::handleSensorGain(int cam)
{
    if (!protocolAtLeast(beVers, 1, 27))
        return;
    const int n = cam + 1;
    double range[2] = {1.0, 3.0}; // kept by a failed read
    cm->getDoubleArray(range, 2, "camera min_max_sensor_gain c%02d", n);
    CameraSettings::setSliderRange(horizontalSlider_sensorGain, scaledToInt(range[0], 100), scaledToInt(range[1], 100));
    if (cm->getDouble(&dSensorGain, Cmd::SensorGain, n) != 0)
        dSensorGain = 1.0;
    horizontalSlider_sensorGain->setValue(scaledToInt(dSensorGain, 100));
    dSensorGain_old = dSensorGain;
}

void CameraWdg::handleHasExposureTime(int cam)
{
    bHasExposureTime = protocolAtLeast(beVers, 1, 24) && answersYes(cm, Cmd::HasSensorExposure, cam + 1);
}

void CameraWdg::handleExposureTime(int cam)
{
    if (!protocolAtLeast(beVers, 1, 24))
        return;
    const int n = cam + 1;
    double maxMs = 0.0;
    const bool maxRead = cm->getDouble(&maxMs, "camera max_sensor_exposure c%02d", n) == 0;
    setSliderMaximum(horizontalSlider_exposureTime, maxRead ? scaledToInt(maxMs, 1000) : 380);

    ValueBuffer value = {};
    if (cm->getString(value, Cmd::SensorExposure, n) != 0) {
        dExposureTimeMs = 0.0;
        return;
    }

    bIsAutoExposureTime = qstrcmp(value, "auto") == 0;
    checkBox_autoExposureCtrl->setChecked(bIsAutoExposureTime);
    enableExposureTime(!bIsAutoExposureTime);
    // NaN and infinities are unreadable like any other text that is no number: 0 then.
    if (!bIsAutoExposureTime && !parseFiniteNumber(QByteArray(value), &dExposureTimeMs))
        dExposureTimeMs = 0.0;
    if (bIsAutoExposureTime)
        label_exposureTimeUs->clear();
    else
        horizontalSlider_exposureTime->setValue(scaledToInt(dExposureTimeMs, 1000));

    dExposureTimeMsController = dExposureTimeMs;
    if (!m_user_action) {
        dExposureTimeMsOld = dExposureTimeMs;
        bIsAutoExposureTimeOld = bIsAutoExposureTime;
    }
}

// Editing: most slots only write the camera's row; the dialog sends those cells.

void CameraWdg::on_checkBox_camera_orientation_toggled(bool checked)
{
    // The column holds the orientation as a number, as setCameraOrientation takes it.
    const int orientation = checked ? 1 : 0;
    setOwnCell(Col::CameraOrientation, orientation);
    setCameraOrientation(orientation);
}

void CameraWdg::on_comboBox_markerMode_currentIndexChanged(int index)
{
    markerMode = markerModeOfWord(comboBox_markerMode->itemText(index));
    setOwnCell(Col::MarkerMode, int(markerMode));
}

void CameraWdg::on_doubleSpinBox_markerMaxSize_valueChanged(double percent)
{
    setOwnCell(Col::MarkerMaxSize, percent);
    if (!m_user_action)
        return;
    const double maxPixels = percent * dChipsize;
    if (doubleSpinBox_markerMinSize->value() > maxPixels) {
        // The minimum gives way without clamping back: the box the operator touched
        // keeps its value even where the other box rounds to one decimal.
        const QSignalBlocker blocker(doubleSpinBox_markerMinSize);
        doubleSpinBox_markerMinSize->setValue(maxPixels);
        setOwnCell(Col::MarkerMinSize, maxPixels);
    }
}

void CameraWdg::on_doubleSpinBox_markerMinSize_valueChanged(double pixels)
{
    setOwnCell(Col::MarkerMinSize, pixels);
    if (!m_user_action || dChipsize <= 0)
        return;
    if (pixels > doubleSpinBox_markerMaxSize->value() * dChipsize) {
        const double percent = pixels / dChipsize;
        const QSignalBlocker blocker(doubleSpinBox_markerMaxSize);
        doubleSpinBox_markerMaxSize->setValue(percent);
        setOwnCell(Col::MarkerMaxSize, percent);
    }
}

void CameraWdg::on_comboBox_syncGroup_currentIndexChanged(QString text)
{
    setOwnCell(Col::SyncGroup, text);
    // Modulated flash works on the first channel only.
    if (text != CameraSettings::channelText(1) && cell(model, cam_idx, Col::ModFlash).toBool())
        setOwnCell(Col::ModFlash, false);
}

void CameraWdg::on_horizontalSlider_displayIntensity_valueChanged(int value)
{
    setOwnCell(Col::DisplayIntensity, value);
    label_displayIntensityPercent->setText(QStringLiteral("%1%").arg(value));
    // Not while loading: a timer started by loading re-read all cameras from every page (n²) and overwrote iDisplayIntensity.
    if (!m_loading)
        timerDisplayIntensity.start(CameraSettings::DisplayIntensityDelayMs);
}

void CameraWdg::on_horizontalSlider_displayRingIntensity_valueChanged(int value)
{
    setOwnCell(Col::RingDisplayIntensity, value);
    label_displayRingIntensityPercent->setText(QStringLiteral("%1%").arg(value));
    // Not while loading, as for the display intensity above.
    if (!m_loading)
        timerDisplayRingIntensity.start(CameraSettings::DisplayIntensityDelayMs);
}

void CameraWdg::on_comboBox_displayMode_currentIndexChanged(int index)
{
    const QString id = comboBox_displayMode->itemData(index).toString();
    setOwnCell(Col::DisplayMode, id);
    setDisplayMode(id);
}

void CameraWdg::on_comboBox_cameraMode_currentIndexChanged(int index)
{
    const QString key = comboBox_cameraMode->itemData(index).toString();
    setOwnCell(Col::CameraModeData, key);
    setOwnCell(Col::CameraMode, getCameraModeDesc(cam_idx, key));
    // A pending exposure change must reach the controller before the mode changes the
    // exposure range; afterwards the range and value of the new mode are read back.
    writeExposuretimeToController(cam_idx);
    setModusForCamToController(cam_idx, key);
    handleExposureTime(cam_idx);
}

void CameraWdg::on_horizontalSlider_markerThreshold_valueChanged(int value)
{
    dMarkerThreshold = value / 100.0;
    setOwnCell(Col::MarkerThreshold, dMarkerThreshold);
    label_markerThresholdPercent->setText(QStringLiteral("%1 %").arg(value));
}

void CameraWdg::on_horizontalSlider_sensorGain_valueChanged(int value)
{
    dSensorGain = value / 100.0;
    setOwnCell(Col::SensorGain, dSensorGain);
    label_valSensorGain->setText(QStringLiteral("%1").arg(dSensorGain, 0, 'f', 1));
}

void CameraWdg::on_horizontalSlider_exposureTime_valueChanged(int value)
{
    dExposureTimeMs = value / 1000.0;
    setOwnCell(Col::ExposureTime, dExposureTimeMs);
    label_exposureTimeUs->setText(bIsAutoExposureTime ? QString() : QStringLiteral("%1 us").arg(value));
    updateExposuretimeInBriskbox(cam_idx, dExposureTimeMs);
}

void CameraWdg::on_checkBox_autoExposureCtrl_clicked(bool checked)
{
    if (!protocolAtLeast(beVers, 1, 24) || !bHasExposureTime)
        return;
    bIsAutoExposureTime = checked;
    CameraSettings::setExposureControl(cm, cam_idx + 1, checked,
                                       QStringLiteral("Error: Unable to set exposure control to default value"));
    if (!checked) {
        if (cm->getDouble(&dExposureTimeMs, Cmd::SensorExposure, cam_idx + 1) != 0)
            dExposureTimeMs = 0.0;
        setOwnCell(Col::ExposureTime, dExposureTimeMs);
        dExposureTimeMsController = dExposureTimeMs;
    }
    enable_disable_exposureControls();
    setOwnCell(Col::AutoExposureTime, bIsAutoExposureTime);
    updateAutoExposuretimeInBriskbox(cam_idx, bIsAutoExposureTime);
}

void CameraWdg::on_pushButton_markerThresholdDefault_clicked()
{
    restoreDefault(cm, cam_idx + 1,
                   {"camera marker_threshold c%02d %s", Cmd::MarkerThreshold,
                    "Error: Unable to set marker threshold to default", 0.1, 100, horizontalSlider_markerThreshold},
                   &dMarkerThreshold);
}

void CameraWdg::on_pushButton_exposureTimeDefault_clicked()
{
    restoreDefault(cm, cam_idx + 1,
                   {Cmd::SetSensorExposureWord, Cmd::SensorExposure, "Error: Unable to set default exposure time", 0.0,
                    1000, horizontalSlider_exposureTime},
                   &dExposureTimeMs);
    dExposureTimeMsController = dExposureTimeMs;
}

void CameraWdg::on_pushButton_defaultSensorGain_clicked()
{
    if (protocolAtLeast(beVers, 1, 27) && bHasSensorGain)
        restoreDefault(cm, cam_idx + 1,
                       {"camera sensor_gain c%02d %s", Cmd::SensorGain, "Error: Unable to set sensor gain to default",
                        1.0, 100, horizontalSlider_sensorGain},
                       &dSensorGain);
}

void CameraWdg::onSendDisplayIntensityCommand()
{
    setDisplayIntensity(horizontalSlider_displayIntensity->value());
    // One camera's display intensity can change the others', so the whole column is read.
    updateAllDisplayIntensityValues();
}

namespace {

// The page's immediate writes: nothing to do while the page is disabled, where the
// camera lacks the setting or already holds wanted; the member takes the value once
// the controller has it.
template <typename Value, typename Send>
int sendChange(IOManager* channel, bool applies, Value* current, const Value& wanted, Send send, const char* error)
{
    if (!applies || wanted == *current)
        return 0;
    if (send() != 0) {
        CameraSettings::reportError(channel, QString::fromLatin1(error));
        return -1;
    }
    *current = wanted;
    return 0;
}

} // namespace

int CameraWdg::setDisplayIntensity(int percent)
{
    const bool applies = isEnabled() && bHasDisplayIntensity && protocolAtLeast(beVers, 1, 15);
    return sendChange(cm, applies, &iDisplayIntensity, percent, [&] {
        return cm->setParameter("camera display_intensity c%02d %f", cam_idx + 1, percent / 100.0);
    }, "Error: Unable to set camera display intensity");
}

int CameraWdg::setDisplayRingIntensity(int percent)
{
    const bool applies = isEnabled() && hasDisplayRingIntensity && protocolAtLeast(beVers, 1, 27);
    return sendChange(cm, applies, &displayRingIntensity, percent, [&] {
        return cm->setParameter("camera display_ring_intensity c%02d %f", cam_idx + 1, percent / 100.0);
    }, "Error: Unable to set camera ring display intensity");
}

int CameraWdg::setDisplayMode(const QString& settingId)
{
    const bool applies = isEnabled() && bHasDisplayMode && protocolAtLeast(beVers, 1, 15)
        && displayModesSupported.contains(settingId, Qt::CaseSensitive);
    return sendChange(cm, applies, &sDisplayMode, settingId, [&] {
        return cm->setParameter("camera display_setting c%02d %s", cam_idx + 1, settingId.toLatin1().constData());
    }, "Error: Unable to set camera display mode");
}

int CameraWdg::setCameraOrientation(int orientation)
{
    return sendChange(cm, isEnabled(), &camera_orientation, orientation, [&] {
        return cm->setParameter("camera display_upside_down c%02d %s", cam_idx + 1, yesNo(orientation != 0));
    }, "Error: Unable to set camera display orientation");
}

void CameraWdg::updateAllDisplayIntensityValues()
{
    if (!model)
        return;
    for (int row = 0; row < model->rowCount(); ++row) {
        if (isMissingCamera(model, row))
            continue;
        double fraction = 0.0; // kept by a failed read
        cm->getDouble(&fraction, Cmd::DisplayIntensity, row + 1);
        iDisplayIntensity = scaledToInt(fraction, 100);
        setCell(model, row, Col::DisplayIntensity, iDisplayIntensity);
    }
}

void CameraWdg::writeExposuretimeToController(int cam)
{
    if (!protocolAtLeast(beVers, 1, 24) || !bHasExposureTime || bIsAutoExposureTime
        || dExposureTimeMs == dExposureTimeMsController)
        return;
    if (cm->setParameter(Cmd::SetSensorExposure, cam + 1, dExposureTimeMs) != 0)
        reportError(cm, "Error: Unable to set exposure time for camera");
    dExposureTimeMsController = dExposureTimeMs;
}

void CameraWdg::setModusForCamToController(int cam, QString modeKey)
{
    // Without a table the cell reads false: no mode is written.
    if (!protocolAtLeast(beVers, 1, 15) || !cell(model, cam, Col::HasCameraMode).toBool())
        return;
    if (cm->setParameter(Cmd::SetMode, cam + 1, modeKey.toLatin1().constData()) != 0)
        reportError(cm, "Error: Unable to set camera mode");
    CameraSettings::announceConfigurationChanged(cm);
}

void CameraWdg::enable_disable_exposureControls()
{
    const bool manual = !checkBox_autoExposureCtrl->isChecked();
    enableExposureTime(manual);
    horizontalSlider_exposureTime->setValue(
        manual ? scaledToInt(cell(model, cam_idx, Col::ExposureTime).toDouble(), 1000) : 0);
    label_exposureTimeUs->setText(manual ? QStringLiteral("%1 us").arg(scaledToInt(dExposureTimeMs, 1000)) : QString());
}

int CameraWdg::briskboxPartnerRow(int cam) const
{
    if (!m_user_action || !model)
        return -1;
    // The two cameras of an all-in-one system share exposure control. A slave system
    // reports its model number; the master system its model word.
    if (sCascadeInfos.startsWith(QLatin1String("slave"))) {
        if (iModelSlave != 20 && iModelSlave != 21)
            return -1;
    } else if (!beVers || !beVers->atcModel().startsWith(QLatin1String("BRISKBOX"))) {
        return -1;
    }
    for (int row = 0; row < model->rowCount(); ++row) {
        if (row != cam && cell(model, row, Col::CascadedSystem).toString() == sCascadeInfos)
            return row;
    }
    return -1;
}

void CameraWdg::updateExposuretimeInBriskbox(int cam, double ms)
{
    const int partner = briskboxPartnerRow(cam);
    if (partner >= 0)
        setCell(model, partner, Col::ExposureTime, ms);
}

void CameraWdg::updateAutoExposuretimeInBriskbox(int cam, bool autoOn)
{
    const int partner = briskboxPartnerRow(cam);
    if (partner < 0)
        return;
    setCell(model, partner, Col::AutoExposureTime, autoOn);
    CameraSettings::setExposureControl(cm, partner + 1, autoOn,
                                       QStringLiteral("Error: Unable to set automatic exposure control"));
    if (autoOn)
        return;
    double ms = 0.0; // kept by a failed read
    cm->getDouble(&ms, Cmd::SensorExposure, partner + 1);
    setCell(model, partner, Col::ExposureTime, ms);
}

// Presentation

void CameraWdg::showEvent(QShowEvent* event)
{
    if (model && cam_idx >= 0) {
        // The overview may have changed the row since the page was shown last; mirroring
        // it back into the row through the slots must not count as a change.
        const ProgrammaticChange mirroring(m_user_action, model);
        const int row = cam_idx;
        horizontalSlider->setValue(cell(model, row, Col::FlashIntensity).toInt());
        checkBox_modulated->setChecked(cell(model, row, Col::ModFlash).toBool());
        checkBox_static_reflex_skip->setChecked(cell(model, row, Col::StaticReflexSuppr).toBool());
        checkBox_dynamic_reflex_skip->setChecked(cell(model, row, Col::DynReflexSuppr).toBool());
        comboBox_markerMode->setCurrentIndex(comboBox_markerMode->findData(cell(model, row, Col::MarkerMode).toInt()));
        spinBox_markerMaxNumber->setValue(cell(model, row, Col::MarkerMaxNumber).toInt());
        doubleSpinBox_markerMaxSize->setValue(cell(model, row, Col::MarkerMaxSize).toDouble());
        doubleSpinBox_markerMinSize->setValue(cell(model, row, Col::MarkerMinSize).toDouble());
        selectExactText(comboBox_syncGroup, cell(model, row, Col::SyncGroup).toString());
        comboBox_cameraMode->setCurrentIndex(comboBox_cameraMode->findData(cell(model, row, Col::CameraModeData).toString()));
        comboBox_displayMode->setCurrentIndex(comboBox_displayMode->findData(cell(model, row, Col::DisplayMode).toString()));
        horizontalSlider_displayIntensity->setValue(cell(model, row, Col::DisplayIntensity).toInt());
        horizontalSlider_displayRingIntensity->setValue(cell(model, row, Col::RingDisplayIntensity).toInt());
        horizontalSlider_markerThreshold->setValue(scaledToInt(cell(model, row, Col::MarkerThreshold).toDouble(), 100));
        horizontalSlider_sensorGain->setValue(scaledToInt(cell(model, row, Col::SensorGain).toDouble(), 100));
        horizontalSlider_exposureTime->setValue(scaledToInt(cell(model, row, Col::ExposureTime).toDouble(), 1000));
        checkBox_autoExposureCtrl->setChecked(cell(model, row, Col::AutoExposureTime).toBool());
    }
    // The camera marks itself on its own display while its page is shown.
    if (protocolAtLeast(beVers, 1, 15) && cam_idx >= 0)
        cm->setParameter(Cmd::SwitchDisplayMark, cam_idx + 1, "yes");
    adjustControlsWidth();
    enable_disable_exposureControls();
    QDialog::showEvent(event);
}

void CameraWdg::hideEvent(QHideEvent* event)
{
    if (cam_idx >= 0) {
        if (protocolAtLeast(beVers, 1, 15))
            cm->setParameter(Cmd::SwitchDisplayMark, cam_idx + 1, "no");
        // A display intensity still waiting for its write is dropped with the page.
        timerDisplayIntensity.stop();
        timerDisplayRingIntensity.stop();
    }
    QDialog::hideEvent(event);
}

void CameraWdg::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit onEscapePressed();
    else
        event->accept(); // Enter must not reach the dialog's default button from this page
}

void CameraWdg::showDetails(bool show)
{
    setWidgetsVisible({label_markerMode, comboBox_markerMode, label_markerMaxNumber, spinBox_markerMaxNumber,
                       label_markerMaxSize, label_markerMaxSize_unit, doubleSpinBox_markerMaxSize,
                       label_markerMinSize, label_markerMinSize_unit, doubleSpinBox_markerMinSize, line}, show);
    setWidgetsVisible({label_markerThreshold, horizontalSlider_markerThreshold, label_markerThresholdPercent,
                       pushButton_markerThresholdDefault}, show && bHasMarkerThreshold);
    setWidgetsVisible({label_sensorGain, horizontalSlider_sensorGain, label_valSensorGain,
                       pushButton_defaultSensorGain}, show && bHasSensorGain);
    enableExposureTime(!bIsAutoExposureTime);
    setWidgetsVisible({label_exposureTime, horizontalSlider_exposureTime, label_exposureTimeUs,
                       checkBox_autoExposureCtrl, pushButton_exposureTimeDefault}, show && bHasExposureTime);
}

void CameraWdg::setVisibleDynReflexSuppr(bool show)
{
    if (show)
        checkBox_dynamic_reflex_skip->show();
}

void CameraWdg::adjustControlsWidth()
{
    alignControlWidths({comboBox_cameraMode, comboBox_displayMode, comboBox_syncGroup},
                       {{horizontalSlider_displayIntensity, label_displayIntensityPercent},
                        {horizontalSlider_displayRingIntensity, label_displayRingIntensityPercent}}, false);
}
