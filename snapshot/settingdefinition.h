#ifndef SETTINGDEFINITION_H
#define SETTINGDEFINITION_H

// One camera setting a snapshot holds: the word the controller names it by (which is
// also its key in a snapshot file), the protocol version that brought it, how the
// controller tells whether a camera has it, and what its values look like.
struct SettingDefinition
{
    enum class Kind {
        Integer,    // a whole number: flash intensity, maximum number of markers
        Number,     // a decimal number in the wire's unit: fraction, pixels, factor
        Flag,       // "yes" or "no"
        MarkerMode, // "default", "accurate" or "fast"
        Word,       // a name the controller gives: camera mode key, display setting id
        SyncGroup,  // "d01 ch03" or "none"
        Exposure    // milliseconds, or "auto" under automatic exposure control
    };

    const char* name;          // "flash_intensity": read as "camera flash_intensity cNN"
    int sinceMinor;            // brought by protocol 1.N
    Kind kind;
    // The camera has the setting when one of these "camera <flag> cNN" queries answers
    // "yes"; none: every camera has it.
    const char* flags[2];
    // Camera modes are a choice only with two modes or more.
    bool needsSeveralModes;
};

#endif // SETTINGDEFINITION_H
