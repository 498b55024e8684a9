#include "cameratablecolumns.h"

#include <QCoreApplication>

namespace CameraTable {

namespace {

// The translation context of the header texts: they belong to the dialog that sets them.
const char* const TranslationContext = "CameraSettingsDlg";

// The enum counts the columns in list order; each has the number the list gives it.
#define CAMERA_TABLE_NUMBER(name, number, header) static_assert(name == number, #name " is column " #number);
CAMERA_TABLE_COLUMNS(CAMERA_TABLE_NUMBER)
#undef CAMERA_TABLE_NUMBER

// Indexed by column number.
const char* const kHeaderTexts[] = {
#define CAMERA_TABLE_HEADER(name, number, header) header,
    CAMERA_TABLE_COLUMNS(CAMERA_TABLE_HEADER)
#undef CAMERA_TABLE_HEADER
};

static_assert(sizeof kHeaderTexts / sizeof kHeaderTexts[0] == ColumnCount,
              "one header entry per camera table column");

} // namespace

const char* headerSource(int column)
{
    return column >= 0 && column < ColumnCount ? kHeaderTexts[column] : nullptr;
}

QString headerText(int column)
{
    const char* source = headerSource(column);
    return source ? QCoreApplication::translate(TranslationContext, source) : QString();
}

} // namespace CameraTable
