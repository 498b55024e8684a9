#ifndef WIREFORMAT_H
#define WIREFORMAT_H

#include "controllererror.h"

#include <QByteArray>
#include <QString>

// How values look on the controller's wire: words separated by single blanks,
// flags as yes/no, numbers without superfluous digits, descriptions with blanks
// in double quotes, numbered things as a letter and two digits (c01, m02, t03).
namespace WireFormat {

QByteArray errorLine(ControllerError code, const QByteArray& text);
QByteArray yesNo(bool on);
QByteArray number(int value);
QByteArray number(double value);
QByteArray word(const QString& text);
// A description: in double quotes when it holds a blank or is empty.
QByteArray description(const QString& text);
QByteArray indexWord(char letter, int number);

// The wire carries printable text; bytes below blank and DEL are control characters.
bool holdsControlCharacter(const QByteArray& line);

bool parseYesNo(const QByteArray& word, bool* on);
bool parseInt(const QByteArray& word, int* value);
bool parseDouble(const QByteArray& word, double* value); // finite numbers only
// "c03" with prefix "c" gives 3, "ch010" with prefix "ch" gives 10; the number must
// be 1 or more.
bool parseIndexWord(const QByteArray& word, const QByteArray& prefix, int* number);

// A sync group: "d01 ch03" (channel 3 of sync card 1) or "none" (channel 0).
bool parseSyncGroup(const QByteArray& value, int* channel);
QByteArray syncGroup(int channel);

// The parse and format pairs for the value types of settings.
bool parseValue(const QByteArray& word, bool* value);
bool parseValue(const QByteArray& word, int* value);
bool parseValue(const QByteArray& word, double* value);
bool parseValue(const QByteArray& word, QString* value);
QByteArray formatValue(bool value);
QByteArray formatValue(int value);
QByteArray formatValue(double value);
QByteArray formatValue(const QString& value);

} // namespace WireFormat

#endif // WIREFORMAT_H
