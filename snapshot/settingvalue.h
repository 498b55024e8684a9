#ifndef SETTINGVALUE_H
#define SETTINGVALUE_H

#include "settingdefinition.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>

// Values of settings as a snapshot keeps them: numbers as JSON numbers in the wire's
// own unit, words as the controller writes them ("yes", "auto", "d01 ch03", "m02").
// The same value is written to the controller, shown to the operator and stored in
// the file, so that what was saved is what comes back.
namespace SettingValue {

// The controller's answer as a value of the kind; false when it is none (value may be null).
bool fromWire(SettingDefinition::Kind kind, const QByteArray& text, QJsonValue* value);
// Whether a value from a file is one of the kind; false with what was expected.
bool check(SettingDefinition::Kind kind, const QJsonValue& value, QString* why);
// The value as the wire writes it: numbers in the C convention, as short as they read
// back exactly ("0.6", "60"), never in exponent form; words as they are.
QByteArray text(const QJsonValue& value);
// The value for people: its text, or "(absent)" for a setting one side does not have.
QString shown(const QJsonValue& value);

} // namespace SettingValue

#endif // SETTINGVALUE_H
