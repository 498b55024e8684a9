#include "camerasettingshelpers.h"

#include "BackendVersions.h"
#include "cameracommands.h"
#include "cameratablecolumns.h"

#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QSlider>
#include <QStandardItemModel>
#include <QTimer>

#include <cstdarg>
#include <cstdio>
#include <limits>

namespace CameraSettings {

namespace {

// The text after the first blank, trimmed; empty when there is no blank.
QString afterFirstBlank(const QString& text)
{
    return text.section(QLatin1Char(' '), 1).trimmed();
}

} // namespace

bool protocolAtLeast(const BackendVersions* versions, int major, int minor)
{
    return versions && versions->protocolAtLeast(major, minor);
}

bool isBriskbox(const BackendVersions* versions)
{
    return versions && versions->atcModel() == QLatin1String("BRISKBOX");
}

QString withoutDoubleQuotes(const QString& text)
{
    QString result = text;
    result.remove(QLatin1Char('"'));
    return result;
}

void reportError(IOManager* channel, const QString& text)
{
    if (channel)
        channel->showMessage("standard", "QUARVO3", 1, text.toUtf8().constData());
}

void announceConfigurationChanged(IOManager* channel)
{
    if (channel)
        channel->showMessage("GlobalEvent", "ConfigurationModule", 1, "ActiveConfigurationChanged");
}

bool answersYes(IOManager* channel, const char* format, ...)
{
    // Only %d and %s reach this: no number whose form the locale could change.
    char path[IOManager::CommandBufferSize];
    va_list args;
    va_start(args, format);
    const int length = vsnprintf(path, sizeof path, format, args);
    va_end(args);
    // A path too long for the channel is refused by it unsent; so it is here.
    if (!channel || length < 0 || length >= int(sizeof path))
        return false;
    ValueBuffer value = {};
    // One reading for every flag: a value with more words after "yes" is no yes (the page once took its first word alone).
    return channel->getString(value, "%s", path) == 0 && isYes(value);
}

void setExposureControl(IOManager* channel, int camera, bool automatic, const QString& manualError)
{
    if (automatic) {
        if (channel->setParameter(CameraCommand::SetSensorExposureWord, camera, "auto") != 0)
            reportError(channel, QStringLiteral("Error: Unable to set automatic exposure control"));
    } else if (channel->setParameter(CameraCommand::SetSensorExposureWord, camera, "default") != 0) {
        reportError(channel, manualError);
    }
}

QString cameraModeDescription(IOManager* channel, int camera, const QString& key)
{
    ValueBuffer desc = {};
    if (!channel || channel->getString(desc, CameraCommand::ModeDesc, camera, key.toLatin1().constData()) != 0)
        return QString();
    return withoutDoubleQuotes(QString::fromLatin1(desc));
}

QVariant cell(const QStandardItemModel* table, int row, int column)
{
    return table ? table->data(table->index(row, column), Qt::EditRole) : QVariant();
}

bool isMissingCamera(const QStandardItemModel* table, int row)
{
    return cell(table, row, CameraTable::Missing).toBool();
}

void setCell(QStandardItemModel* table, int row, int column, const QVariant& value)
{
    if (table)
        table->setData(table->index(row, column), value, Qt::EditRole);
}

void setUpDebounceTimer(QTimer* timer, QObject* page, const char* objectName, const std::function<void()>& send)
{
    timer->setParent(page);
    timer->setObjectName(QLatin1String(objectName));
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, page, send);
}

QString syncGroupWord(const QString& channelText)
{
    return QStringLiteral("ch") + afterFirstBlank(channelText).rightJustified(2, QLatin1Char('0'));
}

int channelFromSyncGroupValue(const QString& value, bool* ok)
{
    bool parsed = false;
    const int channel = afterFirstBlank(value).mid(2).toInt(&parsed, 10);
    if (ok)
        *ok = parsed;
    return parsed ? channel : 0;
}

QString channelTextFromSyncGroupValue(const QString& value)
{
    bool ok = false;
    const int channel = channelFromSyncGroupValue(value, &ok);
    return channelText(ok ? channel : 1);
}

void addCameraModeItems(QComboBox* comboBox, IOManager* channel, int camera, int count)
{
    // A description that cannot be read leaves its mode out; an empty one that was read stays.
    for (int mode = 1; mode <= count; ++mode) {
        ValueBuffer desc = {};
        const QString key = cameraModeKey(mode);
        if (channel->getString(desc, CameraCommand::ModeDesc, camera, key.toLatin1().constData()) == 0)
            comboBox->addItem(withoutDoubleQuotes(QString::fromLatin1(desc)), key);
    }
}

void setSliderRange(QAbstractSlider* slider, int minimum, int maximum)
{
    const qint64 widest = qint64(minimum) + std::numeric_limits<int>::max();
    slider->setRange(minimum, int(qMin<qint64>(maximum, widest)));
}

void setSliderMaximum(QAbstractSlider* slider, int maximum)
{
    slider->setRange(qMin(0, maximum), maximum);
}

void setWidgetsVisible(std::initializer_list<QWidget*> widgets, bool visible)
{
    for (QWidget* widget : widgets)
        widget->setVisible(visible);
}

void setWidgetsEnabled(std::initializer_list<QWidget*> widgets, bool enabled)
{
    for (QWidget* widget : widgets)
        widget->setEnabled(enabled);
}

void collapseSpacer(QSpacerItem* spacer, QLayout* layout)
{
    spacer->changeSize(0, 0, QSizePolicy::Minimum, QSizePolicy::Minimum);
    layout->invalidate();
}

void alignControlWidths(std::initializer_list<QComboBox*> combos,
                        std::initializer_list<QPair<QSlider*, QLabel*>> sliders, bool slidersCount)
{
    const int labelSpacing = 6;
    int target = 0;
    for (QComboBox* combo : combos)
        target = qMax(target, combo->width());
    for (const auto& row : sliders) {
        if (slidersCount)
            target = qMax(target, row.first->width() + row.second->width() + labelSpacing);
    }
    for (QComboBox* combo : combos) {
        if (combo->width() < target)
            combo->setMinimumWidth(target);
    }
    for (const auto& row : sliders) {
        const int width = target - row.second->width() - labelSpacing;
        if (width > row.first->width())
            row.first->setMinimumWidth(width);
    }
}

void selectExactText(QComboBox* comboBox, const QString& text)
{
    comboBox->setCurrentIndex(comboBox->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

} // namespace CameraSettings
