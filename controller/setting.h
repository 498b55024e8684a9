#ifndef SETTING_H
#define SETTING_H

// A value the operator can change on the controller, with the value that
// "default" restores.
template <typename T>
struct Setting
{
    T value{};
    T defaultValue{};

    void assign(const T& v)
    {
        value = v;
        defaultValue = v;
    }
};

#endif // SETTING_H
