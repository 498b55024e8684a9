#ifndef CAMERASETTINGSHELPERS_H
#define CAMERASETTINGSHELPERS_H

#include "IOManager.h"

#include <QString>
#include <QVariant>

#include <QPair>

#include <functional>
#include <initializer_list>

class BackendVersions;
class QAbstractSlider;
class QComboBox;
class QLabel;
class QLayout;
class QSlider;
class QSpacerItem;
class QStandardItemModel;
class QTimer;
class QWidget;

// Small pieces that the dialog, the overview and the camera pages all need, written
// once: version gates, camera and channel words, controller texts and operator reports.
namespace CameraSettings {

// Buffers for the channel's texts: a value of a get, a whole reply line.
using ValueBuffer = char[IOManager::ValueBufferSize];
using LineBuffer = char[IOManager::LineBufferSize];

// The feature gate a.b: passes for every a.b.x and anything newer. Without version
// information nothing passes, as on the oldest controller.
bool protocolAtLeast(const BackendVersions* versions, int major, int minor);

// The all-in-one system is recognised by its exact model word; without version
// information the dialog shows the camera table.
bool isBriskbox(const BackendVersions* versions);

// "c01" for camera 1: the camera word as the controller and the operator see it.
inline QString cameraId(int cameraNumber) { return QStringLiteral("c%1").arg(cameraNumber, 2, 10, QLatin1Char('0')); }

// Controller descriptions may come in double quotes; none of them is shown.
QString withoutDoubleQuotes(const QString& text);

// An error the operator has to see, in the host's message format. Does nothing
// without a channel.
void reportError(IOManager* channel, const QString& text);

// Tells the host's other modules that the active camera configuration changed.
void announceConfigurationChanged(IOManager* channel);

// A controller's flag word: only the exact "yes" is one.
inline bool isYes(const char* value) { return qstrcmp(value, "yes") == 0; }

// A yes/no read: true only when the controller answers exactly "yes"; a failed read
// says no. Sends what getString sends for the same format.
bool answersYes(IOManager* channel, const char* format, ...) IOMANAGER_PRINTF(2, 3);

// The word of a switch command.
inline const char* yesNo(bool on) { return on ? "yes" : "no"; }

// Switches a camera (1-based number) to automatic exposure, or back to manual through
// the default exposure time of its mode; manualError is reported when the default is refused.
void setExposureControl(IOManager* channel, int camera, bool automatic, const QString& manualError);

// The description of a camera mode key such as "m01", without double quotes; empty when
// it cannot be read.
QString cameraModeDescription(IOManager* channel, int camera, const QString& key);

// A cell of the camera table in the edit role; invalid without a table.
QVariant cell(const QStandardItemModel* table, int row, int column);
// Whether the row stands for a camera the controller reports missing.
bool isMissingCamera(const QStandardItemModel* table, int row);
// Writes a cell through setData (so a recording table records it); nothing without a table.
void setCell(QStandardItemModel* table, int row, int column, const QVariant& value);

// The operator has stopped moving a display intensity slider when it stood still this long.
const int DisplayIntensityDelayMs = 500;
// Makes timer a single-shot child of page under its own name, so that whoever drives
// the page can find a pending write and need not wait for it; send runs when it fires.
void setUpDebounceTimer(QTimer* timer, QObject* page, const char* objectName, const std::function<void()>& send);

// "Channel 3", as the sync group is shown.
inline QString channelText(int channel) { return QStringLiteral("Channel %1").arg(channel); }

// The channel word written to the controller for a shown sync group: the text after
// the first blank, padded to two digits, "ch" before it ("Channel 3" gives "ch03").
QString syncGroupWord(const QString& channelText);

// The item data of the channel list offered for a sync card channel: "ch0" before the
// number, so channel 10 carries "ch010".
inline QString channelListWord(int channel) { return QStringLiteral("ch0%1").arg(channel); }

// The channel number of a controller sync group value such as "d01 ch03": the text
// after the first blank without its first two letters. *ok tells whether it was a number.
int channelFromSyncGroupValue(const QString& value, bool* ok);

// The sync group as shown for a controller value; "Channel 1" when it names no number.
QString channelTextFromSyncGroupValue(const QString& value);

// "m01" for mode 1: the camera mode key as the controller names it.
inline QString cameraModeKey(int mode) { return QStringLiteral("m%1").arg(mode, 2, 10, QLatin1Char('0')); }

// Adds one item per mode 1 ... count of the camera (1-based number): its description
// as text, its key as data. A mode whose description cannot be read is left out.
void addCameraModeItems(QComboBox* comboBox, IOManager* channel, int camera, int count);

// Give a slider the range that controller values ask for. Qt's sliders count their
// steps in an int and divide by zero drawing a span of 2^31, so a wider range keeps its
// minimum and ends INT_MAX steps above it; any other range is set as asked.
void setSliderRange(QAbstractSlider* slider, int minimum, int maximum);
// The maximum alone, from the forms' minimum 0, as QAbstractSlider::setMaximum sets it on
// a fresh slider: 0 to maximum, or maximum alone when it is negative. An earlier
// negative maximum does not keep the minimum down, so no negative value stays choosable.
void setSliderMaximum(QAbstractSlider* slider, int maximum);

// A row of controls (label, control, value label, button) shown or enabled together.
void setWidgetsVisible(std::initializer_list<QWidget*> widgets, bool visible);
void setWidgetsEnabled(std::initializer_list<QWidget*> widgets, bool enabled);
// A hidden row leaves no gap: its spacer shrinks to nothing.
void collapseSpacer(QSpacerItem* spacer, QLayout* layout);
// Lines up a page's choices and sliders: every combo box as wide as the widest, and each
// slider, its value label beside it, ending with them. With slidersCount a slider row that
// is already wider widens the combo boxes too.
void alignControlWidths(std::initializer_list<QComboBox*> combos,
                        std::initializer_list<QPair<QSlider*, QLabel*>> sliders, bool slidersCount);
// Selects the item whose text is exactly text, or none.
void selectExactText(QComboBox* comboBox, const QString& text);

} // namespace CameraSettings

#endif // CAMERASETTINGSHELPERS_H
