#include "camerasettingshelpers.h"

#include "BackendVersions.h"
#include "IOManager.h"

#include <QAbstractSlider>
#include <QComboBox>

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

QString cameraId(int cameraNumber)
{
    return QStringLiteral("c%1").arg(cameraNumber, 2, 10, QLatin1Char('0'));
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

QString channelText(int channel)
{
    return QStringLiteral("Channel %1").arg(channel);
}

QString syncGroupWord(const QString& channelText)
{
    return QStringLiteral("ch") + afterFirstBlank(channelText).rightJustified(2, QLatin1Char('0'));
}

QString channelListWord(int channel)
{
    return QStringLiteral("ch0%1").arg(channel);
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

QString cameraModeKey(int mode)
{
    return QStringLiteral("m%1").arg(mode, 2, 10, QLatin1Char('0'));
}

void addCameraModeItems(QComboBox* comboBox, IOManager* channel, int camera, int count)
{
    if (!channel || !comboBox)
        return;
    for (int mode = 1; mode <= count; ++mode) {
        char desc[IOManager::ValueBufferSize] = {};
        if (channel->getString(desc, "camera mode_desc c%02d m%02d", camera, mode) != 0)
            continue;
        comboBox->addItem(withoutDoubleQuotes(QString::fromLatin1(desc)), cameraModeKey(mode));
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

} // namespace CameraSettings
