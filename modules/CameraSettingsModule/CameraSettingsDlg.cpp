#include "CameraSettingsDlg.h"

#include "camerasettingshelpers.h"
#include "camerasettingsmessagereceiver.h"
#include "cameratablecolumns.h"
#include "ChangeTrackingStandardItemModel.h"
#include "IOManager.h"

#include <QKeyEvent>
#include <QPalette>
#include <QStandardItem>

namespace {

const char kReceiverName[] = "CameraSettingsModule";

} // namespace

using CameraSettings::isBriskbox;
using CameraSettings::protocolAtLeast;

CameraSettingsDlg::CameraSettingsDlg(IOManager* channel, QWidget* parent, BackendVersions* versions)
    : QDialog(parent),
      cm(channel),
      beVers(versions),
      overview(nullptr),
      model(nullptr),
      bShowDynReflexSuppr(false),
      messageReceiver(nullptr),
      m_lct_flash_intensity(0),
      m_bStaticReflexskip(false),
      m_lct_modulated_flash(false),
      m_lct_num_cam(0),
      m_is_config_locked(false),
      m_parent(parent),
      bUserAction(false)
{
    setupUi(this);
    setPalette(QPalette());

    m_icon_lock.addFile(QStringLiteral(":/lock.png"), QSize(), QIcon::Normal, QIcon::Off);
    m_icon_ok.addFile(QStringLiteral(":/green_hook.png"), QSize(), QIcon::Normal, QIcon::Off);
    m_icon_cross.addFile(QStringLiteral(":/red_cross.png"), QSize(), QIcon::Normal, QIcon::Off);

    initMessageReceiver();

    if (isBriskbox(beVers))
        buildCompactPanel();
    else
        buildCameraTable();
}

CameraSettingsDlg::~CameraSettingsDlg() = default;

void CameraSettingsDlg::buildCompactPanel()
{
    enable_lct_widget(true);
    adjustSize();
    setSizeGripEnabled(false);
    setFixedHeight(220);
    setFixedWidth(530);
    // The built-in cameras are counted once here, and their flash intensities and static
    // reflex suppression made to agree, before the panel is first loaded.
}

void CameraSettingsDlg::buildCameraTable()
{
    enable_lct_widget(false);

    model = new ChangeTrackingStandardItemModel(0, CameraTable::ColumnCount, this);
    model->setChangeRecordingActive(false);
    model->clear();
    model->setColumnCount(CameraTable::ColumnCount);
    for (int column = 0; column < CameraTable::ColumnCount; ++column) {
        if (CameraTable::headerSource(column))
            model->setHeaderData(column, Qt::Horizontal, CameraTable::headerText(column), Qt::EditRole);
    }

    // The overview page is created and given the model here, before the dialog connects:
    // it must have refreshed its global controls when onModelItemChanged runs.
    connect(model, &QStandardItemModel::itemChanged, this, &CameraSettingsDlg::onModelItemChanged);
}

void CameraSettingsDlg::initMessageReceiver()
{
    messageReceiver = new CameraSettingsMessagereceiver(this, cm);
    // Built before the host handed over its channel, the dialog registers nothing and reads nothing.
    if (cm)
        cm->registerMessageReceiver(kReceiverName, messageReceiver);
    connect(messageReceiver, &CameraSettingsMessagereceiver::sendShowDynReflexSuppr,
            this, &CameraSettingsDlg::onSendShowDynReflexSuppr);
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
    char result[IOManager::LineBufferSize] = {};
    if (cm->getString(result, "config is_changeable") != 0)
        return false;
    return qstrcmp(result, "no") == 0;
}

void CameraSettingsDlg::update_from_module()
{
    bUserAction = false;

    // The cameras show their sync group on their own displays while the dialog is open.
    if (cm && protocolAtLeast(beVers, 1, 27))
        cm->setParameter("camera display_show_syncgroup all yes");

    if (isBriskbox(beVers)) {
        // The panel's three values are read here; this variant's loading ends with them.
        return;
    }
    // The camera pages, the table rows and the overview are rebuilt here.
}

void CameraSettingsDlg::enable_lct_widget(bool on)
{
    QWidget* const panel[] = {
        label_lct_flash_intensity, label_lct_no_flash, slider_lct_flash_intensity,
        slider_lct_max_flash, spinBox_lct_flash_intensity, label_lct_space,
        checkBox_lct_modulated_flash, checkBox_staticReflexSuppression,
    };
    for (QWidget* widget : panel)
        widget->setVisible(on);
    pushButton_showDetails->setVisible(!on);
    tabWidget->setVisible(!on);
}

void CameraSettingsDlg::applyConfigLock(bool locked)
{
    // A locked configuration may be looked at but not changed: Cancel stays usable.
    setWindowIcon(locked ? m_icon_lock : (m_parent ? m_parent->windowIcon() : QIcon()));
    btnOk->setEnabled(!locked);
    if (isBriskbox(beVers)) {
        QWidget* const controls[] = {
            slider_lct_flash_intensity, spinBox_lct_flash_intensity,
            checkBox_staticReflexSuppression, checkBox_lct_modulated_flash,
        };
        for (QWidget* widget : controls)
            widget->setEnabled(!locked);
    } else {
        for (int i = 0; i < tabWidget->count(); ++i)
            tabWidget->widget(i)->setEnabled(!locked);
    }
}

int CameraSettingsDlg::update_and_exec()
{
    update_from_module();

    if (!isBriskbox(beVers)) {
        // Every opening starts with the details hidden, on the button as on the pages.
        pushButton_showDetails->setText(QStringLiteral("Show &details"));
    }

    m_is_config_locked = is_config_locked();
    applyConfigLock(m_is_config_locked);
    return exec();
}

void CameraSettingsDlg::onModelItemChanged(QStandardItem* /*item*/)
{
    // Modulated flash and sync group changes go to the controller from here.
}

void CameraSettingsDlg::on_btnCancel_clicked()
{
    reject();
}

void CameraSettingsDlg::on_btnOk_clicked()
{
    accept();
}

void CameraSettingsDlg::on_pushButton_showDetails_clicked()
{
    // Switches the detail controls of the overview and the camera pages.
}

void CameraSettingsDlg::keyPressEvent(QKeyEvent* event)
{
    // Escape cancels through reject() and Enter clicks the default button, as in any dialog.
    QDialog::keyPressEvent(event);
}

void CameraSettingsDlg::accept()
{
    QDialog::accept();
}

void CameraSettingsDlg::reject()
{
    QDialog::reject();
}

void CameraSettingsDlg::onSendShowDynReflexSuppr(bool show)
{
    // Takes effect at the next loading; an open dialog keeps what it shows.
    bShowDynReflexSuppr = show;
}
