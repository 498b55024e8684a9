#ifndef DISPLAYTIMERS_H
#define DISPLAYTIMERS_H

class QObject;

// Runs every pending display intensity write of the camera pages and the overview under
// root at once, as their 500 ms debounce timers would when their time is up, so that no
// test waits; returns how many there were.
int fireDisplayTimers(QObject* root);

#endif // DISPLAYTIMERS_H
