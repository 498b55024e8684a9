#include "OverviewWdg.h"

#include "CameraWdg.h"
#include "cameracommands.h"
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"
#include "combocammodedelegate.h"
#include "controllervalues.h"
#include "programmaticchange.h"

#include <QKeyEvent>

#include <algorithm>
#include <limits>

using namespace CameraSettings;
namespace Col = CameraTable;
namespace Cmd = CameraCommand;

namespace {

const int FlashSliderMaximum = 200;

// Whether all values are equal; also when there are none.
template <typename Values>
bool allEqual(const Values& values)
{
    return std::all_of(values.begin(), values.end(), [&](const auto& value) { return value == values.first(); });
}

// A chip size is only used for conversions when it is a real, positive size: a row of a
// missing camera or a camera that reported none must not divide by zero or write
// infinities into the table.
bool usableChipsize(double chipsize)
{
    return chipsize > 0.0 && qIsFinite(chipsize);
}

// A global check box that frees or locks its control; true when it frees it.
bool enableByCheckBox(QWidget* control, int state)
{
    const bool on = state == Qt::Checked;
    control->setEnabled(on);
    return on;
}

// The index of the first combo item whose data equals the common value, or -1.
int comboIndexOfCommonValue(const QComboBox* comboBox, const QVariant& common)
{
    // The items carry their keys as texts.
    return common.isValid() ? comboBox->findData(common.toString()) : -1;
}

// The camera and display mode rows: the common choice shown, or none where the
// cameras differ; a row that is not available is locked.
void showCommonChoice(int index, bool available, QCheckBox* checkBox, QComboBox* comboBox)
{
    if (available) {
        checkBox->setChecked(index >= 0);
        comboBox->setCurrentIndex(index);
        comboBox->setEnabled(index >= 0);
        return;
    }
    comboBox->setCurrentIndex(-1);
    checkBox->setChecked(false);
    setWidgetsEnabled({comboBox, checkBox}, false);
}

// The display and ring display rows: their common value shown, or none (below 0).
void showCommonIntensity(int value, QCheckBox* checkBox, QSlider* slider, QLabel* percentLabel)
{
    const bool common = value >= 0;
    setWidgetsEnabled({slider, percentLabel}, common);
    slider->setValue(common ? value : 0);
    checkBox->setChecked(common);
}

} // namespace

OverviewWdg::OverviewWdg(IOManager* channel, QWidget* parent, BackendVersions* versions)
    : QWidget(parent),
      cm(channel),
      m_parent(parent),
      beVers(versions),
      comboCamModeDelegate(new ComboCamModeDelegate(this, channel))
{
    setupUi(this);
    setPalette(QPalette());

    // Escape on the page ends the whole dialog as Cancel; only a dialog parent can do that.
    if (auto* dialog = qobject_cast<QDialog*>(parent))
        connect(this, &OverviewWdg::onEscapePressed, dialog, &QDialog::reject);

    showDetails(false);

    // Each slider position stands for a flash value per camera (see the calculator).
    horizontalSlider_flash_intensity->setRange(0, FlashSliderMaximum);

    setUpDebounceTimer(&timerDisplayIntensity, this, "timerDisplayIntensity", [this] { onSendDisplayIntensityCommand(); });
    setUpDebounceTimer(&timerDisplayRingIntensity, this, "timerDisplayRingIntensity",
                       [this] { onSendDisplayRingIntensityCommand(); });
}

OverviewWdg::~OverviewWdg()
{
    // The delegates are members and die before the page's children: the view that uses
    // them (and any editor it has open) goes first.
    delete tableView;
    tableView = nullptr;
}

// Small helpers

int OverviewWdg::count_model_data_bool_true(int column) const
{
    int count = 0;
    for (int row = 0; row < rowCount(); ++row)
        count += cell(model, row, column).toBool() ? 1 : 0;
    return count;
}

QVariantList OverviewWdg::columnValues(int column, int flagColumn) const
{
    QVariantList values;
    for (int row = 0; row < rowCount(); ++row) {
        if (flagColumn < 0 ? !isMissingCamera(model, row) : cell(model, row, flagColumn).toBool())
            values << cell(model, row, column);
    }
    return values;
}

QVariant OverviewWdg::commonValueOfFlaggedRows(int flagColumn, int column, const QVariant& none) const
{
    const QVariantList values = columnValues(column, flagColumn);
    return !values.isEmpty() && allEqual(values) ? values.first() : none;
}

// Set-up and loading

void OverviewWdg::setModel(ChangeTrackingStandardItemModel* tableModel)
{
    model = tableModel;
    tableView->setModel(model);

    tableView->setItemDelegateForColumn(Col::FlashIntensity, &spinBoxDelegate);
    tableView->setItemDelegateForColumn(Col::CameraMode, comboCamModeDelegate);
    tableView->setItemDelegateForColumn(Col::ModFlash, &checkBoxDelegateMd);
    tableView->setItemDelegateForColumn(Col::StaticReflexSuppr, &checkBoxDelegateSrs);
    tableView->setItemDelegateForColumn(Col::DynReflexSuppr, &checkBoxDelegateDrs);
    for (CheckboxDelegate* checkBoxDelegate : {&checkBoxDelegateMd, &checkBoxDelegateSrs, &checkBoxDelegateDrs})
        checkBoxDelegate->setModel(model);
    tableView->setItemDelegateForColumn(Col::SyncGroup, &comboBoxDelegate);

    tableView->verticalHeader()->setDefaultSectionSize(28);
    tableView->verticalHeader()->hide();

    static const int shownColumns[] = {
        Col::Camera, Col::Model, Col::Serial, Col::FlashIntensity, Col::ModFlash, Col::StaticReflexSuppr,
        Col::DynReflexSuppr, Col::SyncGroup, Col::CascadedSystem, Col::CameraMode, Col::RoomCal,
    };
    for (int column = 0; column < Col::ColumnCount; ++column)
        tableView->setColumnHidden(column, true);
    QHeaderView* header = tableView->horizontalHeader();
    header->setSectionsClickable(false);
    header->setStretchLastSection(false);
    // The model takes the room that is left; the other shown columns fit their contents.
    for (int column : shownColumns) {
        tableView->setColumnHidden(column, false);
        if (column != Col::RoomCal)
            header->setSectionResizeMode(column, column == Col::Model ? QHeaderView::Stretch
                                                                      : QHeaderView::ResizeToContents);
    }

    tableView->setEditTriggers(QAbstractItemView::AllEditTriggers);

    if (model)
        connect(model, &QStandardItemModel::itemChanged, this, &OverviewWdg::onModelItemChanged);
    connect(tableView, &QAbstractItemView::pressed, this, &OverviewWdg::onTableClickedEvent);
}

void OverviewWdg::update_from_module(QVector<CameraWdg*>& cams)
{
    m_cameras = cams;
    // Everything the page sets while it loads is its own doing, none of it the operator's.
    const ProgrammaticChange loading(bUserAction);

    horizontalSlider_flash_intensity->setEnabled(false);
    checkBox_flash_intensity->setChecked(false);

    fillComboBoxGlobalMarkerMode();

    updateVisability_checkBox_dynamic_reflex_skip();
    updateVisability_comboBox_syncGroup();
    updateVisability_col_cascade();
    updateVisability_col_cameraMode();

    update_checkBox_static_reflex_skip();
    update_checkBox_dynamic_reflex_skip();
    // Also where a reopening reads no camera and the refresh after loading does not run.
    update_checkBox_modulated();

    fill_comboBox_cameraMode();
    fill_comboBox_displayMode();

    updateVisabilityColHasRoomcal();
}

void OverviewWdg::showDetails(bool show)
{
    CameraSettings::setWidgetsVisible({line, checkBox_globalMarkerMode, comboBox_globalMarkerMode,
                                       checkBox_globalMaximumNumberOfMarkers, spinBox_globalMaximumNumberOfMarkers,
                                       checkBox_globalMaximumSizeOfMarker, doubleSpinBox_globalMaximumSizeOfMarkers,
                                       label_percent, checkBox_globalMinimumSizeOfMarker, label_pixel_unit,
                                       doubleSpinBox_globalMinimumSizeOfMarkers}, show);
}

// Showing, hiding, keys, table events

void OverviewWdg::showEvent(QShowEvent* event)
{
    if (model) {
        // What the page sets and writes into the table while it catches up is not the operator's.
        const ProgrammaticChange catchingUp(bUserAction, model);
        gfinc.initValues(model);
        update_horizontalSlider_flash_intensity();
        updateCheckBoxesStaticDynamicReflexSkipFromController();
        enableDisableGlobalWidgets();
        adjustSize();
        setTableViewColumnWidth();
    }

    // Growing and shrinking the dialog by a pixel makes it lay out the resized table again.
    if (m_parent) {
        m_parent->resize(m_parent->width() + 1, m_parent->height() + 1);
        m_parent->resize(m_parent->width() - 1, m_parent->height() - 1);
    }
    adjustControlsWidth();
    QWidget::showEvent(event);
}

void OverviewWdg::hideEvent(QHideEvent* event)
{
    // A display intensity still waiting for its send is dropped with the page.
    timerDisplayIntensity.stop();
    timerDisplayRingIntensity.stop();
    QWidget::hideEvent(event);
}

void OverviewWdg::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit onEscapePressed();
    else
        event->accept(); // Enter must not reach the dialog's default button from this page
}

void OverviewWdg::holdGlobalRefresh(bool hold)
{
    m_refreshHeld = hold;
    if (!hold && m_refreshPending) {
        m_refreshPending = false;
        refreshGlobalControls();
    }
}

void OverviewWdg::onModelItemChanged(QStandardItem* /*item*/)
{
    // Each refresh scans every row; loading writes about forty cells per camera, so it
    // holds the refresh and gets one at its end instead of one per cell.
    if (m_refreshHeld)
        m_refreshPending = true;
    else
        refreshGlobalControls();
}

void OverviewWdg::refreshGlobalControls()
{
    // The global controls show what the table holds; setting them is no operator's change.
    const ProgrammaticChange refresh(bUserAction);
    update_horizontalSlider_flash_intensity();
    update_checkBox_static_reflex_skip();
    update_checkBox_dynamic_reflex_skip();
    update_checkBox_modulated();
    enableDisableGlobalCameraMode();
}

void OverviewWdg::onTableClickedEvent(QModelIndex index)
{
    // A press toggles a switch that the camera has; dynamic reflex suppression is switched
    // only for all cameras together.
    const bool toggled = index.column() == Col::StaticReflexSuppr || index.column() == Col::ModFlash;
    if (toggled && checkBoxDelegateMd.isShowCheckbox(index))
        model->setData(index, !index.data(Qt::EditRole).toBool(), Qt::EditRole);
}

// Column visibility and sizes

void OverviewWdg::updateVisability_checkBox_dynamic_reflex_skip()
{
    const bool show = bShowDynReflexSupprXmlSetting || checkBox_dynamic_reflex_skip->isChecked()
        || count_model_data_bool_true(Col::DynReflexSuppr) > 0;
    checkBox_dynamic_reflex_skip->setVisible(show);
    // The column follows its check box, also back into view after a load that hid it.
    tableView->setColumnHidden(Col::DynReflexSuppr, !show);
}

void OverviewWdg::updateVisability_comboBox_syncGroup()
{
    bIsColSyncGroupVisible = false;
    for (int row = 0; row < rowCount() && !bIsColSyncGroupVisible; ++row)
        bIsColSyncGroupVisible = !cell(model, row, Col::SyncGroup).toString().isEmpty();
    tableView->setColumnHidden(Col::SyncGroup, !bIsColSyncGroupVisible);
}

void OverviewWdg::updateVisability_col_cameraMode()
{
    bIsColCameraModeVisible = count_model_data_bool_true(Col::HasCameraMode) > 0;
    tableView->setColumnHidden(Col::CameraMode, !bIsColCameraModeVisible);
}

void OverviewWdg::setTableViewColumnWidth()
{
    tableView->resizeColumnsToContents();
    int width = 2;
    for (int column = 0; column < Col::ColumnCount; ++column)
        width += tableView->columnWidth(column);
    tableView->setMinimumWidth(width);
}

void OverviewWdg::adjustControlsWidth()
{
    alignControlWidths({comboBox_cameraMode, comboBox_displayMode},
                       {{horizontalSlider_displayIntensity, label_displayIntensityPercent},
                        {horizontalSlider_displayRingIntensity, label_displayRingIntensityPercent}}, true);
}

// Global flash intensity

void OverviewWdg::update_horizontalSlider_flash_intensity()
{
    // The slider's own writes must not move it to the lowest matching position.
    if (bSliderFlashChanging || !model)
        return;
    const int position = gfinc.getSliderPosition(model);
    const bool matches = position >= 0;
    checkBox_flash_intensity->setChecked(matches);
    setWidgetsEnabled({label_noFlash, label_maxFlash, horizontalSlider_flash_intensity}, matches);
    horizontalSlider_flash_intensity->setValue(matches ? position : 0);
}

void OverviewWdg::on_checkBox_flash_intensity_stateChanged(int state)
{
    if (bUserAction)
        setWidgetsEnabled({label_noFlash, label_maxFlash, horizontalSlider_flash_intensity}, state == Qt::Checked);
}

void OverviewWdg::on_horizontalSlider_flash_intensity_valueChanged(int position)
{
    if (!bUserAction || !model)
        return;
    bSliderFlashChanging = true;
    gfinc.setCamFlashValues(position, model);
    bSliderFlashChanging = false;
}

void OverviewWdg::sendFlashIntensityCommand()
{
    // Rows exist only after a load, which the dialog runs only with a channel.
    for (int row = 0; row < rowCount(); ++row) {
        if (!isMissingCamera(model, row))
            cm->setParameter(Cmd::SetFlashIntensity, row + 1, cell(model, row, Col::FlashIntensity).toInt());
    }
}

// Reflex suppression and modulated flash

bool OverviewWdg::allSupportedOn(int flagColumn, int column) const
{
    const int supported = count_model_data_bool_true(flagColumn);
    return supported >= 1 && count_model_data_bool_true(column) == supported;
}

void OverviewWdg::setColumn(int column, const QVariant& value, int flagColumn)
{
    if (!bUserAction)
        return;
    for (int row = 0; row < rowCount(); ++row) {
        if (flagColumn < 0 || cell(model, row, flagColumn).toBool())
            setCell(model, row, column, value);
    }
}

void OverviewWdg::updateCheckBoxesStaticDynamicReflexSkipFromController()
{
    int cameras = 0;
    if (!cm || cm->getInt(&cameras, Cmd::NumberOfCameras) != 0)
        return;
    cameras = boundedCount(cameras, CameraSettings::MaxCameras);

    const auto hideUnlessSupported = [this, cameras](const char* query, QCheckBox* checkBox) {
        int supporting = 0;
        // A query that fails says nothing about the camera; it does not count as "yes".
        for (int camera = 1; camera <= cameras; ++camera)
            supporting += answersYes(cm, query, camera) ? 1 : 0;
        if (supporting == 0)
            checkBox->hide();
    };
    hideUnlessSupported(Cmd::HasStaticReflexSkip, checkBox_static_reflex_skip);
    hideUnlessSupported(Cmd::HasDynamicReflexSkip, checkBox_dynamic_reflex_skip);
}

// Marker settings

bool OverviewWdg::allPresentCamerasOffer(const char* query) const
{
    bool offered = true;
    for (int row = 0; row < rowCount(); ++row) {
        if (isMissingCamera(model, row))
            continue;
        ValueBuffer reply = {};
        if (!cm || cm->getString(reply, query, row + 1) != 0) {
            offered = false; // unknown for this camera, but the others are still asked
            continue;
        }
        if (qstrcmp(reply, "no") == 0)
            return false;
    }
    return offered;
}

void OverviewWdg::fillComboBoxGlobalMarkerMode()
{
    comboBox_globalMarkerMode->clear();
    comboBox_globalMarkerMode->addItem(QStringLiteral("default"), int(CameraWdg::MARKER_MODE_DEFAULT));
    if (allPresentCamerasOffer(Cmd::HasMarkerModeAccurate))
        comboBox_globalMarkerMode->addItem(QStringLiteral("accurate"), int(CameraWdg::MARKER_MODE_ACCURATE));
    if (allPresentCamerasOffer(Cmd::HasMarkerModeFast))
        comboBox_globalMarkerMode->addItem(QStringLiteral("fast"), int(CameraWdg::MARKER_MODE_FAST));
}

void OverviewWdg::enableDisableGlobalWidgets()
{
    enableDisableGlobalMarkerMode();
    enableDisableGlobalMarkerMaxNumber();
    update_global_marker_size_limit();
    enableDisableGlobalMarkerMaxSize();
    enableDisableGlobalMarkerMinSize();
    enableDisableGlobalCameraMode();
    enableDisableGlobalDisplayMode();
    enableDisableGlobalDisplayIntensity();
    enableDisableGlobalDisplayRingIntensity();
}

void OverviewWdg::enableDisableGlobalMarkerMode()
{
    QVector<int> modes;
    for (const QVariant& value : columnValues(Col::MarkerMode)) {
        const int mode = value.toInt();
        modes << (mode == CameraWdg::MARKER_MODE_ACCURATE || mode == CameraWdg::MARKER_MODE_FAST
                      ? mode : int(CameraWdg::MARKER_MODE_DEFAULT));
    }
    const bool same = allEqual(modes);
    checkBox_globalMarkerMode->setChecked(same);
    comboBox_globalMarkerMode->setEnabled(same);
    comboBox_globalMarkerMode->setCurrentIndex(comboBox_globalMarkerMode->findData(
        same && !modes.isEmpty() ? modes.first() : int(CameraWdg::MARKER_MODE_DEFAULT)));
}

void OverviewWdg::on_checkBox_globalMarkerMode_stateChanged(int state)
{
    if (enableByCheckBox(comboBox_globalMarkerMode, state))
        on_comboBox_globalMarkerMode_activated(comboBox_globalMarkerMode->currentIndex());
}

void OverviewWdg::on_comboBox_globalMarkerMode_activated(int index)
{
    setColumn(Col::MarkerMode, int(CameraWdg::markerModeOfWord(comboBox_globalMarkerMode->itemText(index))));
}

void OverviewWdg::enableDisableGlobalMarkerMaxNumber()
{
    // Cameras that differ show the largest number (the box's minimum 1 is above the start 0).
    showCommonSize(Col::MarkerMaxNumber, checkBox_globalMaximumNumberOfMarkers,
                   spinBox_globalMaximumNumberOfMarkers, 0.0, &qMax<double>);
}

void OverviewWdg::on_checkBox_globalMaximumNumberOfMarkers_stateChanged(int state)
{
    if (enableByCheckBox(spinBox_globalMaximumNumberOfMarkers, state))
        on_spinBox_globalMaximumNumberOfMarkers_valueChanged(spinBox_globalMaximumNumberOfMarkers->value());
}

void OverviewWdg::update_global_marker_size_limit()
{
    const QVector<double> limits = presentNumbers(Col::MarkerSizeLimit);
    const QVector<double> chipsizes = presentNumbers(Col::Chipsize);
    double percentLimit = 0.0;
    double pixelLimit = 0.0;
    for (int i = 0; i < limits.size(); ++i) {
        const double pixels = limits.at(i) * chipsizes.at(i);
        percentLimit = i == 0 ? limits.at(i) : qMin(percentLimit, limits.at(i));
        pixelLimit = i == 0 ? pixels : qMin(pixelLimit, pixels);
    }
    doubleSpinBox_globalMaximumSizeOfMarkers->setMaximum(percentLimit);
    doubleSpinBox_globalMinimumSizeOfMarkers->setMaximum(pixelLimit);
}

QVector<double> OverviewWdg::presentNumbers(int column) const
{
    QVector<double> sizes;
    for (const QVariant& value : columnValues(column))
        sizes << value.toDouble();
    return sizes;
}

void OverviewWdg::enableDisableGlobalMarkerMaxSize()
{
    // Cameras that differ show the largest maximum, at least 0.
    showCommonSize(Col::MarkerMaxSize, checkBox_globalMaximumSizeOfMarker, doubleSpinBox_globalMaximumSizeOfMarkers,
                   0.0, &qMax<double>);
}

void OverviewWdg::enableDisableGlobalMarkerMinSize()
{
    // Cameras that differ show the smallest minimum, at most 10000.
    showCommonSize(Col::MarkerMinSize, checkBox_globalMinimumSizeOfMarker, doubleSpinBox_globalMinimumSizeOfMarkers,
                   10000.0, &qMin<double>);
}

template <typename SpinBox>
void OverviewWdg::showCommonSize(int column, QCheckBox* checkBox, SpinBox* spinBox, double start,
                                 const double& (*pick)(const double&, const double&))
{
    const QVector<double> sizes = presentNumbers(column);
    const bool same = allEqual(sizes);
    double shown = start;
    for (double size : sizes)
        shown = pick(shown, size);
    checkBox->setChecked(same);
    spinBox->setEnabled(same);
    spinBox->setValue(same ? sizes.value(0) : shown);
}

void OverviewWdg::on_checkBox_globalMaximumSizeOfMarker_stateChanged(int state)
{
    if (enableByCheckBox(doubleSpinBox_globalMaximumSizeOfMarkers, state))
        on_doubleSpinBox_globalMaximumSizeOfMarkers_valueChanged(doubleSpinBox_globalMaximumSizeOfMarkers->value());
}

void OverviewWdg::on_checkBox_globalMinimumSizeOfMarker_stateChanged(int state)
{
    if (enableByCheckBox(doubleSpinBox_globalMinimumSizeOfMarkers, state))
        on_doubleSpinBox_globalMinimumSizeOfMarkers_valueChanged(doubleSpinBox_globalMinimumSizeOfMarkers->value());
}

void OverviewWdg::on_doubleSpinBox_globalMaximumSizeOfMarkers_valueChanged(double dVal)
{
    if (!bUserAction)
        return;
    // The controller refuses a minimum above the maximum, so the minimum comes down first.
    const double pixels = dVal * cell(model, 0, Col::Chipsize).toDouble();
    if (qIsFinite(pixels) && doubleSpinBox_globalMinimumSizeOfMarkers->value() > pixels) {
        doubleSpinBox_globalMinimumSizeOfMarkers->setValue(pixels);
        setColumn(Col::MarkerMinSize, pixels);
    }
    setColumn(Col::MarkerMaxSize, dVal);
}

void OverviewWdg::on_doubleSpinBox_globalMinimumSizeOfMarkers_valueChanged(double dVal)
{
    if (!bUserAction)
        return;
    const double firstChipsize = cell(model, 0, Col::Chipsize).toDouble();
    // The maximum, in percent of the chip size, has to make room for the new minimum. A
    // camera without a usable chip size keeps its maximum: no percent can be computed.
    if (dVal > doubleSpinBox_globalMaximumSizeOfMarkers->value() * firstChipsize) {
        if (usableChipsize(firstChipsize))
            doubleSpinBox_globalMaximumSizeOfMarkers->setValue(dVal / firstChipsize);
        for (int row = 0; row < rowCount(); ++row) {
            const double chipsize = cell(model, row, Col::Chipsize).toDouble();
            if (usableChipsize(chipsize))
                setCell(model, row, Col::MarkerMaxSize, dVal / chipsize);
        }
    }
    setColumn(Col::MarkerMinSize, dVal);
}

// Camera mode

QString OverviewWdg::getCameraModeDesc(int row, const QString& modeKey) const
{
    return cell(model, row, Col::HasCameraMode).toBool() ? CameraSettings::cameraModeDescription(cm, row + 1, modeKey)
                                                  : QString();
}

bool OverviewWdg::checkModiOfCamsEqual(int nModes, int nCams) const
{
    // One camera agrees with itself; no camera, or cameras without modes, agree on nothing.
    if (nCams < 2 || nModes < 1)
        return nCams == 1;
    QStringList reference;
    for (int mode = 1; mode <= nModes; ++mode)
        reference << getCameraModeDesc(0, CameraSettings::cameraModeKey(mode));
    for (int row = 1; row < nCams; ++row) {
        if (isMissingCamera(model, row))
            continue;
        for (int mode = 1; mode <= nModes; ++mode) {
            if (getCameraModeDesc(row, CameraSettings::cameraModeKey(mode)) != reference.at(mode - 1))
                return false;
        }
    }
    return true;
}

void OverviewWdg::fill_comboBox_cameraMode()
{
    comboBox_cameraMode->clear();
    if (rowCount() == 0 || !protocolAtLeast(beVers, 1, 15) || !cm)
        return;

    // Only the modes that every camera offers can be chosen for all of them.
    int nModes = std::numeric_limits<int>::max();
    int firstRow = -1;
    for (int row = 0; row < rowCount(); ++row) {
        if (!cell(model, row, Col::HasCameraMode).toBool())
            continue;
        if (firstRow < 0)
            firstRow = row;
        int modes = 0;
        if (cm->getInt(&modes, Cmd::NumberOfModes, row + 1) == 0)
            nModes = qMin(nModes, boundedCount(modes, CameraSettings::MaxCameraModes));
    }
    if (nModes == std::numeric_limits<int>::max() || nModes < 1 || !checkModiOfCamsEqual(nModes, rowCount()))
        return;
    CameraSettings::addCameraModeItems(comboBox_cameraMode, cm, firstRow + 1, nModes);
}

int OverviewWdg::getGlobalComboxCameraModeIndex() const
{
    return comboIndexOfCommonValue(comboBox_cameraMode,
                                   commonValueOfFlaggedRows(Col::HasCameraMode, Col::CameraModeData));
}

void OverviewWdg::enableDisableGlobalCameraMode()
{
    const bool available = protocolAtLeast(beVers, 1, 15) && count_model_data_bool_true(Col::HasCameraMode) > 0
        && comboBox_cameraMode->count() > 0;
    if (available)
        checkBox_cameraMode->setEnabled(true);
    showCommonChoice(available ? getGlobalComboxCameraModeIndex() : -1, available, checkBox_cameraMode,
                     comboBox_cameraMode);
}

void OverviewWdg::on_comboBox_cameraMode_activated(int index)
{
    const QString key = comboBox_cameraMode->itemData(index).toString();
    for (int row = 0; row < rowCount(); ++row) {
        setCell(model, row, Col::CameraModeData, key);
        setCell(model, row, Col::CameraMode, getCameraModeDesc(row, key));
    }
}

// Camera display

void OverviewWdg::fill_comboBox_displayMode()
{
    comboBox_displayMode->clear();
    int settings = 0;
    if (!protocolAtLeast(beVers, 1, 15) || rowCount() == 0 || !cm
        || cm->getInt(&settings, Cmd::NumberOfDisplaySettings) != 0)
        return;

    QStringList ids;
    settings = boundedCount(settings, CameraSettings::MaxDisplaySettings);
    for (int t = 1; t <= settings; ++t) {
        ValueBuffer id = {};
        if (cm->getString(id, Cmd::DisplaySettingId, t) == 0)
            ids << QString::fromLatin1(id);
    }

    for (const QString& id : ids) {
        const QByteArray idWord = id.toLatin1();
        bool offered = false;
        for (int row = 0; row < rowCount() && !offered; ++row) {
            if (isMissingCamera(model, row))
                continue;
            offered = answersYes(cm, Cmd::HasDisplaySetting, row + 1, idWord.constData());
        }
        if (!offered)
            continue;
        ValueBuffer desc = {};
        const QString text = cm->getString(desc, Cmd::DisplaySettingDesc, idWord.constData()) == 0
            ? QString::fromLatin1(desc) : id;
        comboBox_displayMode->addItem(withoutDoubleQuotes(text), id);
    }
}

int OverviewWdg::getGlobalComboxDisplayModeIndex() const
{
    return comboIndexOfCommonValue(comboBox_displayMode,
                                   commonValueOfFlaggedRows(Col::HasDisplayMode, Col::DisplayMode));
}

void OverviewWdg::enableDisableGlobalDisplayMode()
{
    const bool available = protocolAtLeast(beVers, 1, 15) && count_model_data_bool_true(Col::HasDisplayMode) > 0;
    showCommonChoice(available ? getGlobalComboxDisplayModeIndex() : -1, available, checkBox_displayMode,
                     comboBox_displayMode);
}

void OverviewWdg::on_comboBox_displayMode_activated(int index)
{
    const QString chosen = comboBox_displayMode->itemData(index).toString();
    for (int row = 0; row < rowCount(); ++row) {
        if (!cell(model, row, Col::HasDisplayMode).toBool())
            continue;
        CameraWdg* page = m_cameras.value(row); // none beyond the pages
        // Every camera can show its number; one that lacks the chosen setting shows that.
        const QString id = page && !page->displayModesSupported.contains(chosen, Qt::CaseSensitive)
            ? QStringLiteral("camera_id") : chosen;
        if (page)
            page->setDisplayMode(id);
        setCell(model, row, Col::DisplayMode, id);
    }
}

int OverviewWdg::getGlobalSliderDisplayIntensity() const
{
    return commonValueOfFlaggedRows(Col::HasDisplayIntensity, Col::DisplayIntensity, -1).toInt();
}

int OverviewWdg::getGlobalSliderDisplayRingIntensity() const
{
    return commonValueOfFlaggedRows(Col::HasRingDisplayIntensity, Col::RingDisplayIntensity, -1).toInt();
}

void OverviewWdg::enableDisableGlobalDisplayIntensity()
{
    // Without the feature the row shows no common value, and its check box is locked.
    const bool available =
        protocolAtLeast(beVers, 1, 15) && count_model_data_bool_true(Col::HasDisplayIntensity) > 0;
    if (!available)
        checkBox_displayIntensity->setEnabled(false);
    showCommonIntensity(available ? getGlobalSliderDisplayIntensity() : -1, checkBox_displayIntensity,
                        horizontalSlider_displayIntensity, label_displayIntensityPercent);
}

void OverviewWdg::enableDisableGlobalDisplayRingIntensity()
{
    if (count_model_data_bool_true(Col::HasRingDisplayIntensity) > 0) {
        showCommonIntensity(getGlobalSliderDisplayRingIntensity(), checkBox_displayRingIntensity,
                            horizontalSlider_displayRingIntensity, label_displayRingIntensityPercent);
        return;
    }
    // No camera has a ring display: the row disappears instead of standing there disabled.
    CameraSettings::setWidgetsVisible({checkBox_displayRingIntensity, horizontalSlider_displayRingIntensity,
                                       label_displayRingIntensityPercent}, false);
    CameraSettings::collapseSpacer(horizontalSpacer_displayRingIntensity, horizontalLayout_displayRingIntensity);
}

void OverviewWdg::setIntensityOfAll(int column, int val, QLabel* percentLabel, QTimer* debounce)
{
    percentLabel->setText(QStringLiteral("%1%").arg(val));
    if (!bUserAction)
        return;
    setColumn(column, val);
    // The cameras are told once the operator has stopped moving the slider.
    debounce->start(CameraSettings::DisplayIntensityDelayMs);
}

void OverviewWdg::onSendDisplayIntensityCommand()
{
    sendToPages(&CameraWdg::setDisplayIntensity, horizontalSlider_displayIntensity->value());
}

void OverviewWdg::onSendDisplayRingIntensityCommand()
{
    sendToPages(&CameraWdg::setDisplayRingIntensity, horizontalSlider_displayRingIntensity->value());
}

void OverviewWdg::sendToPages(int (CameraWdg::*set)(int), int value)
{
    for (CameraWdg* page : qAsConst(m_cameras))
        (page->*set)(value);
}
