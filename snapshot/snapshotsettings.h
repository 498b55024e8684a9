#ifndef SNAPSHOTSETTINGS_H
#define SNAPSHOTSETTINGS_H

#include "settingdefinition.h"

#include <QString>
#include <QVector>

// The settings a snapshot holds, in the order the camera settings dialog writes them
// on OK: reflex suppression, camera mode, display, marker mode and number, marker
// sizes, sync group, flash, modulated flash, threshold, gain, exposure. Restoring in
// this order keeps the controller's rules between settings (a camera mode before an
// exposure that only the new mode allows).
namespace SnapshotSettings {

const QVector<SettingDefinition>& all();
// The setting of that name, or null.
const SettingDefinition* find(const QString& name);
// Its place in the order above; -1 when unknown.
int orderOf(const QString& name);

} // namespace SnapshotSettings

#endif // SNAPSHOTSETTINGS_H
