#ifndef OVERVIEWWDG_H
#define OVERVIEWWDG_H

#include "ui_overviewwidget.h"

#include "ChangeTrackingStandardItemModel.h"
#include "SpinBoxDelegate.h"
#include "camerasettingshelpers.h"
#include "cameratablecolumns.h"
#include "checkboxdelegate.h"
#include "comboboxdelegate.h"
#include "globalflashintensitycalculator.h"

#include <QTimer>

class BackendVersions;
class CameraWdg;
class ComboCamModeDelegate;
class IOManager;
class QStandardItem;

// The "All Cameras" page of the camera settings dialog: the shared camera table as a
// table view with in-place editors, and below it controls that set one setting on all
// cameras at once. Each global control shows the cameras' common value, or a neutral
// state when they differ, and acts by writing the table; the flash slider, the display
// mode and the display intensities also reach the controller or the camera pages.
class OverviewWdg : public QWidget, private Ui::OverviewWidget
{
    Q_OBJECT

public:
    OverviewWdg(IOManager* cm, QWidget* parent, BackendVersions* beVers);
    ~OverviewWdg() override;

    // Attaches the shared camera table and sets up the view on it. Called once, before
    // the dialog connects its own handler, so that the page refreshes first.
    void setModel(ChangeTrackingStandardItemModel* model);
    // Loads the page from the already filled table; cams are the dialog's pages in row order.
    void update_from_module(QVector<CameraWdg*>& cams);
    // Shows or hides the marker section of the global controls.
    void showDetails(bool show);
    // The host's wish to always show dynamic reflex suppression; read at the next load.
    void setVisibleDynReflexSuppr(bool show) { bShowDynReflexSupprXmlSetting = show; }
    // While held, the table's changes do not refresh the global controls; releasing the
    // hold refreshes them once if anything changed meanwhile.
    void holdGlobalRefresh(bool hold);

signals:
    void onEscapePressed();

public slots:
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void onSendDisplayIntensityCommand();
    void onSendDisplayRingIntensityCommand();
    void sendFlashIntensityCommand();
    void on_horizontalSlider_displayIntensity_valueChanged(int val)
        { setIntensityOfAll(CameraTable::DisplayIntensity, val, label_displayIntensityPercent,
                            &timerDisplayIntensity); }
    void on_checkBox_displayIntensity_stateChanged(int state)
        { CameraSettings::setWidgetsEnabled({horizontalSlider_displayIntensity,
                                             label_displayIntensityPercent}, state == Qt::Checked); }
    void on_checkBox_displayMode_stateChanged(int state)
        { comboBox_displayMode->setEnabled(state == Qt::Checked); }
    void on_comboBox_displayMode_activated(int index);
    void on_horizontalSlider_displayRingIntensity_valueChanged(int val)
        { setIntensityOfAll(CameraTable::RingDisplayIntensity, val, label_displayRingIntensityPercent,
                            &timerDisplayRingIntensity); }
    void on_checkBox_displayRingIntensity_stateChanged(int state)
        { CameraSettings::setWidgetsEnabled({horizontalSlider_displayRingIntensity,
                                             label_displayRingIntensityPercent}, state == Qt::Checked); }
    void on_comboBox_cameraMode_activated(int index);
    void on_checkBox_cameraMode_stateChanged(int state)
        { comboBox_cameraMode->setEnabled(state == Qt::Checked); }
    void on_checkBox_flash_intensity_stateChanged(int state);
    void on_checkBox_dynamic_reflex_skip_clicked(bool checked)
        { setColumn(CameraTable::DynReflexSuppr, checked, CameraTable::HasDynReflexSuppr); }
    void on_checkBox_static_reflex_skip_clicked(bool checked)
        { setColumn(CameraTable::StaticReflexSuppr, checked, CameraTable::HasStaticReflexSuppr); }
    void on_horizontalSlider_flash_intensity_sliderReleased() { sendFlashIntensityCommand(); }
    void on_horizontalSlider_flash_intensity_valueChanged(int position);
    void on_checkBox_modulated_toggled(bool checked)
        { setColumn(CameraTable::ModFlash, checked, CameraTable::HasModFlash); }
    void on_checkBox_globalMarkerMode_stateChanged(int state);
    void on_checkBox_globalMaximumNumberOfMarkers_stateChanged(int state);
    void on_checkBox_globalMaximumSizeOfMarker_stateChanged(int state);
    void on_checkBox_globalMinimumSizeOfMarker_stateChanged(int state);
    void on_comboBox_globalMarkerMode_activated(int index);
    void on_spinBox_globalMaximumNumberOfMarkers_valueChanged(int iVal)
        { setColumn(CameraTable::MarkerMaxNumber, iVal); }
    void on_doubleSpinBox_globalMaximumSizeOfMarkers_valueChanged(double dVal);
    void on_doubleSpinBox_globalMinimumSizeOfMarkers_valueChanged(double dVal);
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void onModelItemChanged(QStandardItem* item);
    void onTableClickedEvent(QModelIndex index);

private:
    // Visibility of the optional columns and of the dynamic reflex check box.
    void updateVisability_checkBox_dynamic_reflex_skip();
    void updateVisability_comboBox_syncGroup();
    void updateVisability_col_cascade() { tableView->setColumnHidden(CameraTable::CascadedSystem, true); }
    void updateVisability_col_cameraMode();
    void updateVisabilityColHasRoomcal()
        { tableView->setColumnHidden(CameraTable::RoomCal, !CameraSettings::protocolAtLeast(beVers, 1, 18)); }
    void setTableViewColumnWidth();
    void adjustControlsWidth();

    // The global controls that follow every change of the table.
    void refreshGlobalControls();
    // Global flash intensity and the check boxes that stand for a whole column.
    void update_horizontalSlider_flash_intensity();
    void update_checkBox_static_reflex_skip()
        { checkBox_static_reflex_skip->setChecked(allSupportedOn(CameraTable::HasStaticReflexSuppr,
                                                                 CameraTable::StaticReflexSuppr)); }
    void update_checkBox_dynamic_reflex_skip()
        { checkBox_dynamic_reflex_skip->setChecked(allSupportedOn(CameraTable::HasDynReflexSuppr,
                                                                  CameraTable::DynReflexSuppr)); }
    void update_checkBox_modulated()
        { checkBox_modulated->setChecked(allSupportedOn(CameraTable::HasModFlash, CameraTable::ModFlash)); }
    void updateCheckBoxesStaticDynamicReflexSkipFromController();
    // The operator writes value into column of every row, or of those whose flagColumn is true.
    void setColumn(int column, const QVariant& value, int flagColumn = -1);
    // Checked when every camera with the feature has it on, and at least one has it.
    bool allSupportedOn(int flagColumn, int column) const;

    void fillComboBoxGlobalMarkerMode();
    bool allPresentCamerasOffer(const char* query) const;
    void enableDisableGlobalWidgets();
    void enableDisableGlobalMarkerMode();
    void enableDisableGlobalMarkerMaxNumber();
    void update_global_marker_size_limit();
    void enableDisableGlobalMarkerMaxSize();
    void enableDisableGlobalMarkerMinSize();
    // A marker number or size row: the present cameras' common value, or the one pick prefers.
    template <typename SpinBox>
    void showCommonSize(int column, QCheckBox* checkBox, SpinBox* spinBox, double start,
                        const double& (*pick)(const double&, const double&));

    void fill_comboBox_cameraMode();
    bool checkModiOfCamsEqual(int nModes, int nCams) const;
    QString getCameraModeDesc(int row, const QString& modeKey) const;
    void enableDisableGlobalCameraMode();
    int getGlobalComboxCameraModeIndex() const;

    void fill_comboBox_displayMode();
    void enableDisableGlobalDisplayMode();
    int getGlobalComboxDisplayModeIndex() const;
    void enableDisableGlobalDisplayIntensity();
    void enableDisableGlobalDisplayRingIntensity();
    int getGlobalSliderDisplayIntensity() const;
    int getGlobalSliderDisplayRingIntensity() const;
    // The display and ring display rows work alike: a slider position written into every
    // row and later sent to every page.
    void setIntensityOfAll(int column, int val, QLabel* percentLabel, QTimer* debounce);
    void sendToPages(int (CameraWdg::*set)(int), int value);

    // The number of rows whose cell in column reads true; 0 for a column outside the table.
    int count_model_data_bool_true(int column) const;
    // The cells of column in the rows whose flagColumn is true, or with no flag column in
    // the present rows (a missing camera's marker settings are unknown: its row has no
    // such cells, so the marker controls show what the present cameras have in common).
    QVariantList columnValues(int column, int flagColumn = -1) const;
    QVector<double> presentNumbers(int column) const;
    // The value that every row with flagColumn true holds in column; none when two of
    // them differ or no row has the flag.
    QVariant commonValueOfFlaggedRows(int flagColumn, int column, const QVariant& none = QVariant()) const;

    int rowCount() const { return model ? model->rowCount() : 0; }

    IOManager* cm;
    QWidget* m_parent;
    BackendVersions* beVers;
    QVector<CameraWdg*> m_cameras;
    SpinBoxDelegate spinBoxDelegate;
    CheckboxDelegate checkBoxDelegateMd;
    CheckboxDelegate checkBoxDelegateSrs;
    CheckboxDelegate checkBoxDelegateDrs;
    ComboBoxDelegate comboBoxDelegate;
    ComboCamModeDelegate* comboCamModeDelegate;
    ChangeTrackingStandardItemModel* model = nullptr;
    bool bUserAction = true;
    bool bSliderFlashChanging = false;
    GlobalFlashIntensityCalculator gfinc;
    bool bShowDynReflexSupprXmlSetting = false;
    bool bIsColSyncGroupVisible = true;
    bool bIsColCascadeVisible = false;
    bool bIsColCameraModeVisible = false;
    bool m_refreshHeld = false;
    bool m_refreshPending = false;
    QTimer timerDisplayIntensity;
    QTimer timerDisplayRingIntensity;
};

#endif // OVERVIEWWDG_H
