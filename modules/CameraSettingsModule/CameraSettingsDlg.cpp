#include "CameraSettingsDlg.h"

#include "CameraWdg.h"
#include "OverviewWdg.h"
#include "cameracommands.h"
#include "camerasettingshelpers.h"
#include "camerasettingsmessagereceiver.h"
#include "cameratablecolumns.h"
#include "controllervalues.h"
#include "programmaticchange.h"

#include <QKeyEvent>
#include <QMessageBox>

#include <algorithm>

namespace Col = CameraTable;
using namespace CameraSettings;
namespace Cmd = CameraCommand;

namespace {

const char kReceiverName[] = "CameraSettingsModule";

// A camera's row as every opening writes it, column by column with what the loaded page
// holds for it (n is the camera number), in this order: the ring display pair right
// after the display mode, and the sensor gain's support flag before its value.
using Page = const CameraWdg&;
const struct {
    int column;
    QVariant (*value)(const CameraWdg& page, int n);
} kRowFill[] = {
    {Col::Camera, [](Page, int n) -> QVariant { return cameraId(n); }},
    {Col::Model, [](Page p, int) -> QVariant { return p.getModel(); }},
    {Col::Serial, [](Page p, int) -> QVariant { return p.getSerial(); }},
    {Col::FlashIntensity, [](Page p, int) -> QVariant { return p.getFlash(); }},
    {Col::MaxFlash, [](Page p, int) -> QVariant { return p.getMaxFlash(); }},
    {Col::HasModFlash, [](Page p, int) -> QVariant { return p.getHasModulatedFlash(); }},
    {Col::ModFlash, [](Page p, int) -> QVariant { return p.isActiveModulatedFlash(); }},
    {Col::StaticReflexSuppr, [](Page p, int) -> QVariant { return p.isActiveStaticReflexSkip(); }},
    {Col::DynReflexSuppr, [](Page p, int) -> QVariant { return p.isActiveDynamicReflexSkip(); }},
    {Col::CameraOrientation, [](Page p, int) -> QVariant { return p.camera_orientation; }},
    {Col::HasStaticReflexSuppr, [](Page p, int) -> QVariant { return p.getHasStaticReflexSkip(); }},
    {Col::HasDynReflexSuppr, [](Page p, int) -> QVariant { return p.getHasDynamicReflexSkip(); }},
    {Col::MarkerMode, [](Page p, int) -> QVariant { return int(p.markerMode); }},
    {Col::MarkerMaxNumber, [](Page p, int) -> QVariant { return p.iMarkerMaxNumber; }},
    {Col::MarkerMaxSizeAbsolute, [](Page p, int) -> QVariant { return p.dMarkerMaxSize; }},
    {Col::MarkerMaxSize, [](Page p, int) -> QVariant { return p.dMarkerMaxSizePercent; }},
    {Col::MarkerMinSize, [](Page p, int) -> QVariant { return p.dMarkerMinSize; }},
    {Col::SyncGroup, [](Page p, int) -> QVariant { return p.sSyncGroup; }},
    {Col::CascadedSystem, [](Page p, int) -> QVariant { return p.sCascadeInfos; }},
    {Col::MarkerSizeLimitAbsolute, [](Page p, int) -> QVariant { return p.dMarkerSizeLimit; }},
    {Col::MarkerSizeLimit, [](Page p, int) -> QVariant { return p.dMarkerSizeLimitPercent; }},
    {Col::Chipsize, [](Page p, int) -> QVariant { return p.dChipsize; }},
    {Col::HasCameraMode, [](Page p, int) -> QVariant { return p.num_camera_modes > 1; }},
    {Col::CameraModeData, [](Page p, int) -> QVariant { return p.sCameraMode; }},
    {Col::CameraMode, [](Page p, int n) -> QVariant { return p.getCameraModeDesc(n - 1, p.sCameraMode); }},
    {Col::HasDisplayIntensity, [](Page p, int) -> QVariant { return p.bHasDisplayIntensity; }},
    {Col::DisplayIntensity, [](Page p, int) -> QVariant { return p.iDisplayIntensity; }},
    {Col::HasDisplayMode, [](Page p, int) -> QVariant { return p.bHasDisplayMode; }},
    {Col::DisplayMode, [](Page p, int) -> QVariant { return p.sDisplayMode; }},
    {Col::HasRingDisplayIntensity, [](Page p, int) -> QVariant { return p.hasDisplayRingIntensity; }},
    {Col::RingDisplayIntensity, [](Page p, int) -> QVariant { return p.displayRingIntensity; }},
    {Col::RoomCal, [](Page p, int) -> QVariant { return p.getHasRoomcal(); }},
    {Col::Missing, [](Page, int) -> QVariant { return false; }},
    {Col::HasMarkerThreshold, [](Page p, int) -> QVariant { return p.getHasMarkerThreshold(); }},
    {Col::MarkerThreshold, [](Page p, int) -> QVariant { return p.getMarkerThreshold(); }},
    {Col::HasSensorGain, [](Page p, int) -> QVariant { return p.getHasSensorGain(); }},
    {Col::SensorGain, [](Page p, int) -> QVariant { return p.getSensorGain(); }},
    {Col::HasExposureTime, [](Page p, int) -> QVariant { return p.getHasExposureTime(); }},
    {Col::ExposureTime, [](Page p, int) -> QVariant { return p.getExposureTime(); }},
    {Col::AutoExposureTime, [](Page p, int) -> QVariant { return p.getIsAutoExposureTime(); }},
};
static_assert(sizeof kRowFill / sizeof kRowFill[0] == Col::ColumnCount,
              "every column of a present camera's row is written once");

// The question of both OK checks: true for Yes; No, or closing the box, goes back.
bool askToContinue(QWidget* parent, const QString& text, const QString& question)
{
    QMessageBox box(QMessageBox::Warning, CameraSettingsDlg::tr("Warning"), text, QMessageBox::Yes | QMessageBox::No,
                    parent);
    box.setInformativeText(question);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void writeModulatedFlashState(IOManager* cm, int n, bool on)
{
    if (cm->setParameter(Cmd::SwitchModulatedFlash, n, yesNo(on)) != 0)
        reportError(cm, (on ? QStringLiteral("Error: Unable to activate modulated flash for camera %1")
                   : QStringLiteral("Error: Unable to deactivate modulated flash for camera %1")).arg(cameraId(n)));
}

// Restore passes of Cancel for camera n, from what its page read at opening.
void restoreFlash(IOManager* cm, int n, const CameraWdg* page)
{
    int flashNow = 0; // kept by a failed read
    cm->getInt(&flashNow, Cmd::FlashIntensity, n);
    if (flashNow != page->getOldFlash() && cm->setParameter(Cmd::SetFlashIntensity, n, page->getOldFlash()) != 0)
        reportError(cm, QStringLiteral("Error: Unable to reset flash intensity"));
}

void restoreModulatedFlash(IOManager* cm, int n, const CameraWdg* page)
{
    const bool modulatedOld = page->isActiveModulatedFlash();
    if (answersYes(cm, Cmd::ModulatedFlash, n) != modulatedOld
        && cm->setParameter(Cmd::SwitchModulatedFlash, n, yesNo(modulatedOld)) != 0)
        reportError(cm, QStringLiteral("Error: Unable to reset modulated flash"));
}

void restoreExposureControl(IOManager* cm, int n, const CameraWdg* page)
{
    if (!page->getHasExposureTime() || page->getIsAutoExposureTime() == page->getIsAutoExposureTimeOld())
        return;
    const bool automatic = page->getIsAutoExposureTimeOld();
    setExposureControl(cm, n, automatic, QStringLiteral("Error: Unable to set automatic exposure control"));
    if (!automatic && cm->setParameter(Cmd::SetSensorExposure, n, page->getExposureTimeOld()) != 0)
        reportError(cm, QStringLiteral("Error: Unable to set exposure for camera"));
}

void showSyncGroupOnDisplays(IOManager* cm, const BackendVersions* beVers, bool show)
{
    if (protocolAtLeast(beVers, 1, 27))
        cm->setParameter(Cmd::ShowSyncGroupOnDisplays, yesNo(show));
}

void applyCellFlags(QStandardItemModel* model)
{
    const Qt::ItemFlags fixed = Qt::ItemIsEditable | Qt::ItemIsSelectable;
    const Qt::ItemFlags locked = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    for (int row = 0; row < model->rowCount(); ++row) {
        const bool missing = isMissingCamera(model, row);
        const auto removeFlags = [model, row](int column, Qt::ItemFlags flags) {
            if (QStandardItem* item = model->item(row, column))
                item->setFlags(item->flags() & ~flags);
        };
        for (int column = Col::Camera; column <= Col::MaxFlash; ++column)
            removeFlags(column, column <= Col::Serial ? fixed : Qt::ItemIsSelectable);
        // A switch the camera lacks, or a camera that is missing, cannot be changed.
        for (const auto& sw : {qMakePair(Col::ModFlash, Col::HasModFlash),
                               qMakePair(Col::StaticReflexSuppr, Col::HasStaticReflexSuppr)}) {
            const bool lacking = missing || cell(model, row, sw.second).toInt() == 0;
            removeFlags(sw.first, lacking ? locked : Qt::ItemFlags(Qt::ItemIsSelectable));
        }
        if (missing) {
            removeFlags(Col::SyncGroup, locked);
            removeFlags(Col::CameraMode, locked);
        }
        if (QStandardItem* item = model->item(row, Col::RoomCal))
            item->setFlags((item->flags() & ~fixed) | Qt::ItemIsEnabled);
        removeFlags(Col::CascadedSystem, fixed);
    }
}

} // namespace

CameraSettingsDlg::CameraSettingsDlg(IOManager* channel, QWidget* parent, BackendVersions* versions)
    : QDialog(parent),
      cm(channel),
      beVers(versions),
      m_parent(parent)
{
    setupUi(this);
    setPalette(QPalette());

    m_icon_lock.addFile(QStringLiteral(":/lock.png"), QSize(), QIcon::Normal, QIcon::Off);
    m_icon_ok.addFile(QStringLiteral(":/green_hook.png"), QSize(), QIcon::Normal, QIcon::Off);
    m_icon_cross.addFile(QStringLiteral(":/red_cross.png"), QSize(), QIcon::Normal, QIcon::Off);

    messageReceiver = new CameraSettingsMessagereceiver(this, cm);
    // Built before the host handed over its channel, the dialog registers nothing and reads nothing.
    if (cm)
        cm->registerMessageReceiver(kReceiverName, messageReceiver);
    connect(messageReceiver, &CameraSettingsMessagereceiver::sendShowDynReflexSuppr,
            this, &CameraSettingsDlg::onSendShowDynReflexSuppr);

    if (isBriskbox(beVers))
        buildCompactPanel();
    else
        buildCameraTable();
}

// Construction of the two variants

void CameraSettingsDlg::buildCompactPanel()
{
    enable_lct_widget(true);
    adjustSize();
    setSizeGripEnabled(false);
    setFixedSize(530, 220);

    if (!cm)
        return;
    if (cm->getInt(&m_lct_num_cam, Cmd::NumberOfCameras) != 0)
        reportError(cm, QStringLiteral("Error: Unable to get the number of BRISKBOX cameras"));
    // A negative count counts no camera; a huge one no more than the camera word numbers.
    m_lct_num_cam = boundedCount(m_lct_num_cam, MaxCameras);
    lct_check_current_flash_intensity_for_all();
    lct_check_static_reflex_suppression();
}

void CameraSettingsDlg::buildCameraTable()
{
    enable_lct_widget(false);

    model = new ChangeTrackingStandardItemModel(0, Col::ColumnCount, this);
    model->setChangeRecordingActive(false);
    for (int column = 0; column < Col::ColumnCount; ++column) {
        if (Col::headerSource(column))
            model->setHeaderData(column, Qt::Horizontal, Col::headerText(column), Qt::EditRole);
    }

    // The overview connects to the model first, so its global controls are refreshed by
    // the time onModelItemChanged runs.
    overview = new OverviewWdg(cm, this, beVers);
    overview->setModel(model);
    connect(model, &QStandardItemModel::itemChanged, this, &CameraSettingsDlg::onModelItemChanged);
}

void CameraSettingsDlg::about_to_exit()
{
    if (cm && messageReceiver)
        cm->unregisterMessageReceiver(kReceiverName, messageReceiver);
}

bool CameraSettingsDlg::is_config_locked() const
{
    // Controllers before 1.9 have no configuration lock.
    if (!cm || !protocolAtLeast(beVers, 1, 9))
        return false;
    ValueBuffer result = {};
    return cm->getString(result, "config is_changeable") == 0 && qstrcmp(result, "no") == 0;
}

// Loading

void CameraSettingsDlg::update_from_module()
{
    bUserAction = false;
    if (!cm)
        return;

    // The cameras show their sync group on their own displays while the dialog is open.
    showSyncGroupOnDisplays(cm, beVers, true);

    if (isBriskbox(beVers)) {
        // This variant keeps bUserAction false: it has no table whose changes would count.
        loadCompactPanel();
        return;
    }
    if (!model)
        return;
    model->resetChanges();
    fillCameraTable();
    // Only now does every write of the table count as the operator's.
    bUserAction = true;
}

void CameraSettingsDlg::fillCameraTable()
{
    const ProgrammaticChange loading(bUserAction, model);
    overview->holdGlobalRefresh(true);
    qDeleteAll(cams);
    cams.clear();
    tabWidget->clear();
    tabWidget->addTab(overview, QStringLiteral("All Cameras"));
    model->removeRows(0, model->rowCount());

    int numCams = 0; // kept by a failed read
    cm->getInt(&numCams, Cmd::NumberOfCameras);
    // A garbage camera count must not make the dialog build pages without end.
    numCams = boundedCount(numCams, MaxCameras);

    for (int i = 0; i < numCams; ++i) {
        LineBuffer identity = {};
        cm->sendCommand(identity, Cmd::Identity, i + 1);

        auto* page = new CameraWdg(cm, this, beVers);
        page->setModel(model);
        cams.append(page);
        page->update_from_module(i);
        tabWidget->addTab(page, page->getSerial());

        model->insertRow(i);
        addCameraRow(model, page, i);
        page->setVisibleDynReflexSuppr(bShowDynReflexSuppr);
    }

    int lostCams = 0; // none without the count; a negative count is none
    if (protocolAtLeast(beVers, 1, 18) && cm->getInt(&lostCams, "tracking number_of_missing_cameras") == 0)
        addLostCams(boundedCount(lostCams, MaxCameras));

    applyCellFlags(model);
    overview->holdGlobalRefresh(false);

    overview->setVisibleDynReflexSuppr(bShowDynReflexSuppr);
    overview->update_from_module(cams);
}

void CameraSettingsDlg::addCameraRow(QStandardItemModel* model, CameraWdg* page, int row)
{
    for (const auto& fill : kRowFill) {
        model->setData(model->index(row, fill.column), fill.value(*page, row + 1), Qt::EditRole);
        if (fill.column == Col::Serial || fill.column == Col::FlashIntensity)
            model->item(row, fill.column)->setTextAlignment(Qt::AlignCenter);
    }
}

void CameraSettingsDlg::addLostCams(int num_lost_cams)
{
    for (int i = 1; i <= num_lost_cams; ++i) {
        ValueBuffer modelSerial = {};
        if (cm->getString(modelSerial, "tracking missing_camera c%02d", i) != 0)
            continue;
        const QString reply = QString::fromLatin1(modelSerial);
        QString sModel = reply.section(QLatin1Char(' '), 0, 0);
        QString sSerial = reply.section(QLatin1Char(' '), 1, 1);

        ValueBuffer modelDesc = {};
        if (cm->getString(modelDesc, "camera model_desc %s", sModel.toLatin1().constData()) == 0)
            sModel = withoutDoubleQuotes(QString::fromLatin1(modelDesc));
        ValueBuffer serialDesc = {};
        if (protocolAtLeast(beVers, 1, 23) && cm->getString(serialDesc, Cmd::SerialDesc, modelSerial) == 0)
            sSerial = withoutDoubleQuotes(QString::fromUtf8(serialDesc));

        // A missing camera is numbered by its place in the table, after the present ones.
        const int row = model->rowCount();
        model->insertRow(row);
        model->setData(model->index(row, Col::Camera), cameraId(row + 1));
        model->setData(model->index(row, Col::Model), sModel);
        model->setData(model->index(row, Col::Serial), sSerial);
        model->setData(model->index(row, Col::FlashIntensity), 0);
        model->setData(model->index(row, Col::Missing), true);
        model->item(row, Col::FlashIntensity)->setTextAlignment(Qt::AlignCenter);
        for (int column = Col::Camera; column <= Col::FlashIntensity; ++column)
            model->item(row, column)->setFlags(Qt::NoItemFlags);

        auto* page = new CameraWdg(cm, this, beVers);
        page->setModel(model);
        cams.append(page);
        tabWidget->addTab(page, sSerial);
        tabWidget->setTabEnabled(row + 1, false);
    }
}

void CameraSettingsDlg::loadCompactPanel()
{
    int flashValue = 0;
    if (cm->getInt(&flashValue, Cmd::MaxFlashIntensity, 1) != 0)
        reportError(cm, QStringLiteral("Error: Unable to get max flash intensity for BRISKBOX camera"));
    // Each opening starts from the form's minimum 0: a negative maximum at an earlier
    // opening pulled the minimum down with it, and would let a negative flash be chosen.
    CameraSettings::setSliderMaximum(slider_lct_flash_intensity, flashValue);
    spinBox_lct_flash_intensity->setRange(qMin(0, flashValue), flashValue);

    // Camera 1 stands for the whole box: the checks at construction made the cameras agree.
    bool staticReflex = false;
    if (m_lct_num_cam != 0) {
        if (cm->getInt(&flashValue, Cmd::FlashIntensity, 1) != 0)
            reportError(cm, QStringLiteral("Error: Unable to get flash intensity for BRISKBOX camera"));
        staticReflex = answersYes(cm, Cmd::HasStaticReflexSkip, 1) && answersYes(cm, Cmd::StaticReflexSkip, 1);
    }
    slider_lct_flash_intensity->setValue(flashValue);
    spinBox_lct_flash_intensity->setValue(flashValue);
    checkBox_staticReflexSuppression->setChecked(staticReflex);
    // What the slider shows: a flash above a maximum that could not be read is shown
    // clamped, and OK must not take that clamp for the operator's change.
    m_lct_flash_intensity = slider_lct_flash_intensity->value();
    m_bStaticReflexskip = staticReflex;

    ValueBuffer modulated = {};
    if (cm->getString(modulated, Cmd::ModulatedFlash, 1) != 0)
        reportError(cm, QStringLiteral("Error: Unable to check modulated flash for BRISKBOX camera"));
    m_lct_modulated_flash = CameraSettings::isYes(modulated);
    checkBox_lct_modulated_flash->setChecked(m_lct_modulated_flash);
}

void CameraSettingsDlg::lct_check_current_flash_intensity_for_all()
{
    int reference = 0;
    bool uniform = true;
    for (int n = 1; n <= m_lct_num_cam && uniform; ++n) {
        int flashValue = 0; // kept by a failed read
        if (cm->getInt(&flashValue, Cmd::FlashIntensity, n) != 0)
            reportError(cm, QStringLiteral("Error: Unable to get flash intensity for BRISKBOX camera"));
        uniform = n == 1 || flashValue == reference;
        reference = flashValue;
    }
    if (uniform)
        return;

    // Cameras that disagree are all set to their own maximum, which the panel can show as one value.
    int maximum = 0;
    for (int n = 1; n <= m_lct_num_cam; ++n) {
        if (cm->getInt(&maximum, Cmd::MaxFlashIntensity, n) != 0)
            reportError(cm, QStringLiteral("Error: Unable to get max flash intensity for BRISKBOX camera"));
        cm->setParameter(Cmd::SetFlashIntensity, n, maximum);
    }
}

void CameraSettingsDlg::lct_check_static_reflex_suppression()
{
    bool anyOn = false;
    for (int n = 1; n <= m_lct_num_cam && !anyOn; ++n)
        anyOn = answersYes(cm, Cmd::HasStaticReflexSkip, n) && answersYes(cm, Cmd::StaticReflexSkip, n);
    if (!anyOn)
        return;
    for (int n = 1; n <= m_lct_num_cam; ++n) {
        if (!answersYes(cm, Cmd::HasStaticReflexSkip, n))
            continue;
        // Only a camera that answers "no" is switched on; one that cannot be read stays as it is.
        bool on = false;
        if (cm->getBool(&on, Cmd::StaticReflexSkip, n) == 0 && !on)
            cm->setParameter(Cmd::SwitchStaticReflexSkip, n, "yes");
    }
}

void CameraSettingsDlg::enable_lct_widget(bool on)
{
    CameraSettings::setWidgetsVisible({label_lct_flash_intensity, label_lct_no_flash, slider_lct_flash_intensity,
                                       slider_lct_max_flash, spinBox_lct_flash_intensity, label_lct_space,
                                       checkBox_lct_modulated_flash, checkBox_staticReflexSuppression}, on);
    CameraSettings::setWidgetsVisible({pushButton_showDetails, tabWidget}, !on);
}

int CameraSettingsDlg::update_and_exec()
{
    update_from_module();
    m_is_config_locked = is_config_locked();
    // A locked configuration may be looked at but not changed: Cancel stays usable.
    const bool editable = !m_is_config_locked;
    setWindowIcon(editable ? (m_parent ? m_parent->windowIcon() : QIcon()) : m_icon_lock);
    btnOk->setEnabled(editable);
    if (isBriskbox(beVers)) {
        CameraSettings::setWidgetsEnabled({slider_lct_flash_intensity, spinBox_lct_flash_intensity,
                                           checkBox_staticReflexSuppression, checkBox_lct_modulated_flash}, editable);
    } else {
        // Every opening starts with the details hidden, on the button as on the pages.
        pushButton_showDetails->setText(QStringLiteral("Show &details"));
        overview->showDetails(false);
        for (int i = 0; i < tabWidget->count(); ++i)
            tabWidget->widget(i)->setEnabled(editable);
    }
    return exec();
}

// Live writes

void CameraSettingsDlg::onModelItemChanged(QStandardItem* item)
{
    if (!model || !bUserAction || !cm || !item)
        return;
    const int row = item->row();
    if (isMissingCamera(model, row))
        return;
    if (item->column() == Col::ModFlash) {
        writeModulatedFlashToContoller(row);
    } else if (item->column() == Col::SyncGroup) {
        writeSyncGroupToController(row);
        updateAllSyncGroupValues();
    }
}

void CameraSettingsDlg::writeModulatedFlashToContoller(int row)
{
    const bool wanted = cell(model, row, Col::ModFlash).toBool();
    if (wanted != answersYes(cm, Cmd::ModulatedFlash, row + 1))
        writeModulatedFlashState(cm, row + 1, wanted);
}

void CameraSettingsDlg::writeSyncGroupToController(int row)
{
    const int n = row + 1;
    if (!protocolAtLeast(beVers, 1, 6) || !answersYes(cm, Cmd::HasSyncGroup, n))
        return;
    const QString word = CameraSettings::syncGroupWord(cell(model, row, Col::SyncGroup).toString());
    if (cm->setParameter(Cmd::SetSyncGroup, n, word.toLatin1().constData()) != 0)
        reportError(cm, QStringLiteral("Error: Unable to set syncgroup of camera %1").arg(cameraId(n)));
}

void CameraSettingsDlg::updateAllSyncGroupValues()
{
    if (!protocolAtLeast(beVers, 1, 6))
        return;
    const ProgrammaticChange rereading(bUserAction);
    for (int row = 0; row < model->rowCount(); ++row) {
        const int n = row + 1;
        if (isMissingCamera(model, row) || !answersYes(cm, Cmd::HasSyncGroup, n))
            continue;
        // An unreadable group is left empty, which reads as channel 1.
        ValueBuffer group = {};
        cm->getString(group, Cmd::SyncGroup, n);
        setCell(model, row, Col::SyncGroup, channelTextFromSyncGroupValue(QString::fromLatin1(group)));
    }
}

// Writes on OK

void CameraSettingsDlg::saveSettingsToController()
{
    if (!model || !cm)
        return;
    bool configurationChanged = false;
    for (int row = 0; row < model->rowCount(); ++row) {
        if (!isMissingCamera(model, row))
            configurationChanged |= saveRowToController(row, cams.at(row));
    }
    // Other modules rebuild their view of the cameras once, however many modes changed.
    if (configurationChanged)
        CameraSettings::announceConfigurationChanged(cm);
}

bool CameraSettingsDlg::saveRowToController(int row, CameraWdg* page)
{
    // The recorded cells of one camera, in the order the controller expects them; true
    // when its camera mode was written.
    const int n = row + 1;
    const auto changed = [this, row](int column) { return model->isChanged(row, column); };
    const auto value = [this, row](int column) { return cell(model, row, column); };
    if (changed(Col::StaticReflexSuppr) && value(Col::HasStaticReflexSuppr).toBool())
        cm->setParameter(Cmd::SwitchStaticReflexSkip, n, CameraSettings::yesNo(value(Col::StaticReflexSuppr).toBool()));
    if (changed(Col::DynReflexSuppr) && value(Col::HasDynReflexSuppr).toBool())
        cm->setParameter("camera dynamic_reflex_skip c%02d %s", n, CameraSettings::yesNo(value(Col::DynReflexSuppr).toBool()));
    const bool modeChanged = changed(Col::CameraModeData);
    if (modeChanged)
        writeCameraModeToController(row, QString());
    if (changed(Col::DisplayIntensity))
        page->setDisplayIntensity(value(Col::DisplayIntensity).toInt());
    if (changed(Col::DisplayMode))
        page->setDisplayMode(value(Col::DisplayMode).toString());
    if (changed(Col::RingDisplayIntensity))
        page->setDisplayRingIntensity(value(Col::RingDisplayIntensity).toInt());
    if (changed(Col::CameraOrientation))
        page->setCameraOrientation(value(Col::CameraOrientation).toInt());
    if (changed(Col::MarkerMode))
        writeMarkerModeToController(row, page);
    if (changed(Col::MarkerMaxNumber))
        writeMarkerMaxNumberToController(row);
    if (changed(Col::MarkerMaxSize) || changed(Col::MarkerMinSize))
        write_marker_max_min_size_to_controller(row);
    if (changed(Col::SyncGroup))
        writeSyncGroupToController(row);
    if (changed(Col::FlashIntensity))
        writeCameraFlashIntensityToContoller(row);
    // The recorded state is written as it stands, without asking the controller first.
    if (changed(Col::ModFlash))
        writeModulatedFlashState(cm, n, value(Col::ModFlash).toInt() >= 1);
    if (changed(Col::MarkerThreshold) && value(Col::HasMarkerThreshold).toBool())
        writeMarkerThresholdToController(row);
    if (changed(Col::SensorGain) && value(Col::HasSensorGain).toBool())
        writeSensorGainToController(row);
    if (changed(Col::ExposureTime) && value(Col::HasExposureTime).toBool())
        writeExposuretimeToController(row);
    return modeChanged;
}

void CameraSettingsDlg::writeCameraModeToController(int row, QString mode)
{
    if (!protocolAtLeast(beVers, 1, 15) || !cell(model, row, Col::HasCameraMode).toBool())
        return;
    if (mode.isEmpty())
        mode = cell(model, row, Col::CameraModeData).toString();
    if (cm->setParameter(Cmd::SetMode, row + 1, mode.toLatin1().constData()) != 0)
        reportError(cm, QStringLiteral("Error: Unable to set camera mode"));
}

void CameraSettingsDlg::writeMarkerModeToController(int row, const CameraWdg* page)
{
    if (!page->bHasMarkerModeAccurate && !page->bHasMarkerModeFast)
        return;
    static const char* const words[] = {"default", "accurate", "fast"}; // by MarkerMode
    const int mode = cell(model, row, Col::MarkerMode).toInt();
    if (mode >= CameraWdg::MARKER_MODE_DEFAULT && mode <= CameraWdg::MARKER_MODE_FAST)
        cm->setParameter("camera marker_mode c%02d %s", row + 1, words[mode]);
}

void CameraSettingsDlg::writeCameraFlashIntensityToContoller(int row)
{
    if (cm->setParameter(Cmd::SetFlashIntensity, row + 1, cell(model, row, Col::FlashIntensity).toInt()) != 0)
        reportError(cm, QStringLiteral("Error: Unable to set flash intensity to Controller"));
}

void CameraSettingsDlg::writeMarkerMaxNumberToController(int row)
{
    cm->setParameter("camera marker_max_number c%02d %d", row + 1, cell(model, row, Col::MarkerMaxNumber).toInt());
}

void CameraSettingsDlg::write_marker_max_min_size_to_controller(int row)
{
    double currentMin = 0.0;
    // Without the controller's word, the minimum it held when the dialog opened is the best guess.
    if (cm->getDouble(&currentMin, Cmd::MarkerMinSize, row + 1) != 0)
        currentMin = cams.at(row)->dMarkerMinSize;
    const double newMax = cell(model, row, Col::MarkerMaxSize).toDouble() * cell(model, row, Col::Chipsize).toDouble();
    if (currentMin > newMax) {
        // The controller refuses a minimum above the maximum, so the minimum goes first.
        writeMarkerMinSizeToController(row);
        writeMarkerMaxSizeToController(row);
        return;
    }
    if (model->isChanged(row, Col::MarkerMaxSize))
        writeMarkerMaxSizeToController(row);
    if (model->isChanged(row, Col::MarkerMinSize))
        writeMarkerMinSizeToController(row);
}

void CameraSettingsDlg::writeMarkerMaxSizeToController(int row)
{
    const double wanted = cell(model, row, Col::Chipsize).toDouble() * cell(model, row, Col::MarkerMaxSize).toDouble();
    const double limit = CameraSettings::roundedToInt(cell(model, row, Col::MarkerSizeLimitAbsolute).toDouble());
    cm->setParameter("camera marker_max_size c%02d %.3f", row + 1, std::min(wanted, limit));
}

void CameraSettingsDlg::writeMarkerMinSizeToController(int row)
{
    cm->setParameter("camera marker_min_size c%02d %.3f", row + 1, cell(model, row, Col::MarkerMinSize).toDouble());
}

void CameraSettingsDlg::writeMarkerThresholdToController(int row)
{
    writeSupportedValue(row, protocolAtLeast(beVers, 1, 24), Cmd::HasMarkerThreshold, Cmd::SetMarkerThreshold,
                        Col::MarkerThreshold, "Error: Unable to set marker threshold for camera");
}

void CameraSettingsDlg::writeSensorGainToController(int row)
{
    writeSupportedValue(row, protocolAtLeast(beVers, 1, 27), Cmd::HasSensorGain, Cmd::SetSensorGain, Col::SensorGain,
                        "Error: Unable to set sensor gain for camera");
}

void CameraSettingsDlg::writeSupportedValue(int row, bool gate, const char* has, const char* set, int column,
                                            const char* error)
{
    const int n = row + 1;
    if (gate && answersYes(cm, has, n) && cm->setParameter(set, n, cell(model, row, column).toDouble()) != 0)
        reportError(cm, QString::fromLatin1(error));
}

void CameraSettingsDlg::writeExposuretimeToController(int row)
{
    const int n = row + 1;
    if (!protocolAtLeast(beVers, 1, 24) || !answersYes(cm, Cmd::HasSensorExposure, n))
        return;
    if (cell(model, row, Col::AutoExposureTime).toDouble() != 0.0) {
        if (cm->setParameter(Cmd::SetSensorExposureWord, n, "auto") != 0)
            reportError(cm, QStringLiteral("Error: Unable to set exposure for camera to auto"));
        return;
    }
    const double wanted = cell(model, row, Col::ExposureTime).toDouble();
    double current = -0.1;
    ValueBuffer answer = {};
    if (cm->getString(answer, Cmd::SensorExposure, n) == 0)
        CameraSettings::parseFiniteNumber(QByteArray(answer), &current);
    if (current != wanted && cm->setParameter(Cmd::SetSensorExposure, n, wanted) != 0)
        reportError(cm, QStringLiteral("Error: Unable to set exposure for camera"));
}

void CameraSettingsDlg::saveSettingsToBriskbox()
{
    if (!cm)
        return;
    const int flashValue = slider_lct_flash_intensity->value();
    if (flashValue != m_lct_flash_intensity) {
        for (int n = 1; n <= m_lct_num_cam; ++n)
            cm->setParameter(Cmd::SetFlashIntensity, n, flashValue);
    }
    const bool staticReflex = checkBox_staticReflexSuppression->isChecked();
    if (staticReflex != m_bStaticReflexskip) {
        for (int n = 1; n <= m_lct_num_cam; ++n)
            cm->setParameter(Cmd::SwitchStaticReflexSkip, n, CameraSettings::yesNo(staticReflex));
    }
    // The modulated flash of the box is switched through its first camera.
    const bool modulated = checkBox_lct_modulated_flash->isChecked();
    if (modulated != m_lct_modulated_flash && cm->setParameter(Cmd::SwitchModulatedFlash, 1, CameraSettings::yesNo(modulated)) != 0)
        reportError(cm, modulated ? QStringLiteral("Error: Unable to activate modulated flash for BRISKBOX camera")
                         : QStringLiteral("Error: Unable to deactivate modulated flash for BRISKBOX camera"));
}

// OK, Cancel, keys and the details button

void CameraSettingsDlg::on_btnOk_clicked()
{
    if (modCamHasFlash() && !modFlashIsNotSyncGroup1())
        accept();
}

bool CameraSettingsDlg::modCamHasFlash() const
{
    // Active targets are driven by the modulated flash, which needs a flash intensity.
    QString text;
    if (isBriskbox(beVers)) {
        if (!checkBox_lct_modulated_flash->isChecked() || slider_lct_flash_intensity->value() != 0)
            return true;
        text = tr("Cameras have the modulated flash activated but no flash intensity.\n"
                  "Active targets will not work properly.");
    } else {
        if (!model)
            return true;
        int row = 0;
        while (row < model->rowCount()
               && !(cell(model, row, Col::HasModFlash).toInt() >= 1 && cell(model, row, Col::ModFlash).toInt() >= 1))
            ++row;
        if (row == model->rowCount() || cell(model, row, Col::FlashIntensity).toInt() >= 1)
            return true;
        // This camera model drives active targets without the flash.
        if (cell(model, row, Col::Model).toString().toUpper() == QLatin1String("LUMACAM5"))
            return true;
        text = tr("Camera c%1 has the modulated flash activated but no flash intensity.\n"
                  "Active targets will not work properly.").arg(row + 1, 2, 10, QLatin1Char('0'));
    }
    return askToContinue(nullptr, text, tr("Continue?"));
}

bool CameraSettingsDlg::modFlashIsNotSyncGroup1() const
{
    if (isBriskbox(beVers) || !model)
        return false;
    // Active markers follow the first sync group only.
    bool outsideGroup1 = false;
    for (int row = 0; row < model->rowCount() && !outsideGroup1; ++row) {
        const QString group = cell(model, row, Col::SyncGroup).toString();
        outsideGroup1 = cell(model, row, Col::ModFlash).toBool() && !group.isEmpty()
            && group.toLower() != QLatin1String("channel 1");
    }
    if (!outsideGroup1)
        return false;
    const QString text = tr("Modulated flash configured for sync group #2 or #3.\n"
                            "For compatibility with active markers by Ostrel.\n"
                            "activate modulated flash for cameras in syncgroup #1 only!");
    return !askToContinue(m_parent, text, tr("Are you sure you want to continue?"));
}

void CameraSettingsDlg::accept()
{
    // The controls disappear while the commands go out, so nobody edits what is being written.
    setCursor(Qt::WaitCursor);
    hide();
    if (cm)
        showSyncGroupOnDisplays(cm, beVers, false);
    if (isBriskbox(beVers))
        saveSettingsToBriskbox();
    else
        saveSettingsToController();
    setCursor(Qt::ArrowCursor);
    done(QDialog::Accepted);
}

void CameraSettingsDlg::reject()
{
    if (!model || !cm) {
        done(QDialog::Rejected);
        return;
    }
    showSyncGroupOnDisplays(cm, beVers, false);
    if (restoreCameraModes())
        CameraSettings::announceConfigurationChanged(cm);

    // Pass by pass, each over every present camera in order, what differs from the
    // values read at opening is written back.
    const auto eachPresent = [&](auto restore) {
        for (int row = 0; row < cams.size(); ++row) {
            if (!isMissingCamera(model, row))
                restore(row, cams.at(row));
        }
    };
    eachPresent([this](int row, CameraWdg* page) { restoreFlash(cm, row + 1, page); });
    eachPresent([this](int row, CameraWdg* page) { restoreModulatedFlash(cm, row + 1, page); });
    eachPresent([](int, CameraWdg* page) {
        page->setCameraOrientation(page->m_cameraOrientationOld);
        page->setDisplayIntensity(page->oldDisplayIntensity);
        page->setDisplayRingIntensity(page->oldDisplayRingIntensity);
        page->setDisplayMode(page->m_displayModeOld);
    });
    eachPresent([this](int row, CameraWdg* page) { restoreSyncGroup(row, page); });
    eachPresent([this](int row, CameraWdg* page) {
        restoreValue(row, page->getHasMarkerThreshold(), page->getMarkerThreshold(), page->getMarkerThresholdOld(),
                     Cmd::SetMarkerThreshold, "Error: Unable to reset marker threshold for camera");
    });
    eachPresent([this](int row, CameraWdg* page) {
        restoreValue(row, page->getHasSensorGain(), page->getSensorGain(), page->getSensorGainOld(),
                     Cmd::SetSensorGain, "Error: Unable to reset sensor gain for camera");
    });
    eachPresent([this](int row, CameraWdg* page) {
        restoreValue(row, page->getHasExposureTime(), page->getExposureTime(), page->getExposureTimeOld(),
                     Cmd::SetSensorExposure, "Error: Unable to reset exposure time for camera");
    });
    eachPresent([this](int row, CameraWdg* page) { restoreExposureControl(cm, row + 1, page); });
    done(QDialog::Rejected);
}

bool CameraSettingsDlg::restoreCameraModes()
{
    bool changed = false;
    for (int row = 0; row < cams.size(); ++row) {
        const QString oldMode = cams.at(row)->sCameraModeOld;
        if (oldMode != cell(model, row, Col::CameraModeData).toString()) {
            writeCameraModeToController(row, oldMode);
            changed = true;
        }
    }
    return changed;
}

void CameraSettingsDlg::restoreSyncGroup(int row, const CameraWdg* page)
{
    if (page->oldSyncGroup == cell(model, row, Col::SyncGroup).toString())
        return;
    const QString word = CameraSettings::syncGroupWord(page->oldSyncGroup);
    if (cm->setParameter(Cmd::SetSyncGroup, row + 1, word.toLatin1().constData()) != 0)
        reportError(cm, QStringLiteral("Error: Unable to reset camera syncgroup"));
}

void CameraSettingsDlg::restoreValue(int row, bool has, double now, double old, const char* command,
                                     const char* error)
{
    if (has && now != old && cm->setParameter(command, row + 1, old) != 0)
        reportError(cm, QString::fromLatin1(error));
}

void CameraSettingsDlg::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_F7) {
        // Escape cancels through reject() and Enter clicks the default button, as in any dialog.
        QDialog::keyPressEvent(event);
        return;
    }
    // F7 steps through the camera tabs; the compact panel has none, so it swallows the key.
    if (isBriskbox(beVers) || tabWidget->count() == 0)
        return;
    const int next = (tabWidget->currentIndex() + 1) % tabWidget->count();
    if (tabWidget->isTabEnabled(next))
        tabWidget->setCurrentIndex(next);
}

void CameraSettingsDlg::on_pushButton_showDetails_clicked()
{
    if (!model)
        return;
    const bool show = pushButton_showDetails->text().toLower() == QLatin1String("show &details");
    for (CameraWdg* page : qAsConst(cams))
        page->showDetails(show);
    overview->showDetails(show);
    pushButton_showDetails->setText(show ? QStringLiteral("Hide &details") : QStringLiteral("Show &details"));
}
