#include "controllerstate.h"

namespace {

bool parseModelId(const QString& word, uint* id)
{
    if (!word.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        return false;
    bool ok = false;
    *id = word.mid(2).toUInt(&ok, 16);
    return ok;
}

} // namespace

bool ControllerState::sameModel(const QString& a, const QString& b)
{
    uint idA = 0;
    uint idB = 0;
    if (parseModelId(a, &idA) && parseModelId(b, &idB))
        return idA == idB;
    return a == b;
}

bool ControllerState::protocolAtLeast(const VersionInfo& since) const
{
    // A gate a.b is passed by every a.b.x, as the frontend gates its features.
    return protocolVersion >= VersionInfo(since.major(), since.minor(), -1);
}

int ControllerState::displaySettingIndex(const QString& id) const
{
    for (int i = 0; i < displaySettings.size(); ++i) {
        if (displaySettings.at(i).id == id)
            return i;
    }
    return -1;
}

int ControllerState::cascadeSlaveIndex(const QString& id) const
{
    for (int i = 0; i < cascadeSlaves.size(); ++i) {
        if (cascadeSlaves.at(i).id == id)
            return i;
    }
    return -1;
}

bool ControllerState::modelDescription(const QString& model, QString* description) const
{
    for (const auto& entry : modelDescriptions) {
        if (sameModel(entry.first, model)) {
            *description = entry.second;
            return true;
        }
    }
    return false;
}

bool ControllerState::serialDescription(const QString& model, const QString& serial, QString* description) const
{
    for (const CameraState& camera : cameras) {
        if (camera.serial == serial && sameModel(camera.model, model)) {
            *description = camera.serialDescription();
            return true;
        }
    }
    for (const MissingCamera& camera : missingCameras) {
        if (camera.serial == serial && sameModel(camera.model, model)) {
            *description = camera.serialDesc.isEmpty() ? camera.serial : camera.serialDesc;
            return true;
        }
    }
    return false;
}
