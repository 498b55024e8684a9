#ifndef WIDGETSUITE_H
#define WIDGETSUITE_H

#include <QApplication>
#include <QtTest>

// The base of the suites that build widgets: after each case no window may be left behind.
class WidgetSuite : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a case left a window behind"); }
};

#endif // WIDGETSUITE_H
