#ifndef DIALOGSCENARIOS_H
#define DIALOGSCENARIOS_H

#include <QByteArray>

// Systems the dialog's suites connect to, as scenario JSON for the simulated controller
// (the files under scenarios/).
namespace DialogScenarios {

// Three present cameras (the second without modulated flash and static reflex
// suppression, the first with two camera modes) and two missing ones.
extern const QByteArray ThreeAndTwoMissing;
// Five present cameras with every feature, a sync card of 12 channels; camera 2 has no
// sync group, cameras 3 and 5 sit in channels 2 and 3, camera 5 runs automatic exposure.
extern const QByteArray Five;
// Two present cameras with every feature (the second in channel 2, on automatic
// exposure, with modulated flash), a sync card of 4 channels and one missing camera;
// no protocol version, so that each user sets its own.
extern const QByteArray EveryFeature;
// An all-in-one BRISKBOX system with `cameras` built-in cameras, flash 5 of 50.
QByteArray briskbox(int cameras);

} // namespace DialogScenarios

#endif // DIALOGSCENARIOS_H
