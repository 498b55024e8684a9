#include "widgetsuite.h"

#include <QApplication>
#include <QtTest>

void WidgetSuite::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a case left a window behind");
}
