#include "displaytimers.h"

#include <QMetaObject>
#include <QStringList>
#include <QTimer>

int fireDisplayTimers(QObject* root)
{
    static const QStringList names{QStringLiteral("timerDisplayIntensity"), QStringLiteral("timerDisplayRingIntensity")};
    int fired = 0;
    for (QTimer* timer : root->findChildren<QTimer*>()) {
        if (!names.contains(timer->objectName()) || !timer->isActive())
            continue;
        timer->stop();
        QMetaObject::invokeMethod(timer, "timeout");
        ++fired;
    }
    return fired;
}
