#ifndef COMMANDFAMILIES_H
#define COMMANDFAMILIES_H

class CommandVocabulary;

// The protocol's commands, family by family.
void addSystemCommands(CommandVocabulary& vocabulary);   // system, config, cascade, tracking
void addIdentityCommands(CommandVocabulary& vocabulary); // camera identity and optics
void addFlashCommands(CommandVocabulary& vocabulary);    // flash, modulated flash, reflex suppression
void addDisplayCommands(CommandVocabulary& vocabulary);  // the cameras' own displays
void addMarkerCommands(CommandVocabulary& vocabulary);   // marker detection
void addSensorCommands(CommandVocabulary& vocabulary);   // gain, exposure, camera modes
void addSyncCommands(CommandVocabulary& vocabulary);     // sync groups and the sync card

#endif // COMMANDFAMILIES_H
