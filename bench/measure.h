#ifndef MEASURE_H
#define MEASURE_H

// One timed operation of the dialog: the module's own time (the controller's handling
// time taken off) and the controller commands it sent.
struct Measure
{
    double moduleMs = 0;
    int commands = 0;
};

#endif // MEASURE_H
