#ifndef WIDGETSUITE_H
#define WIDGETSUITE_H

#include <QObject>

// The base of the suites that build widgets: after each case no window may be left behind.
class WidgetSuite : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
};

#endif // WIDGETSUITE_H
