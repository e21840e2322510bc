// HostTexts: every text that a user of the host reads, in one table: English, which is the key of its translations.
//
// "translation.xml" beside this file holds the translations; a test sees to it that each text has them, with the same
// conversions. What goes in for a conversion tells Message.h. Not here are words that are typed or stored, and what the
// watch over the guest reports: that is for the guest's makers, and comes from any thread.
#pragma once

#include "appservices/translation/TranslatedText.h"

namespace tessera::host {

struct HostTexts {
    // The session: projects, events, edits.
    TranslatedText noProject{u"no project is open; use: new FOLDER SOUNDFILE... or: open FILE"};
    TranslatedText noSuchEvent{u"there is no event %d; the project has %d, see: show"};
    TranslatedText projectNotOpened{u"warning: the project that was asked for isn't opened: %s"};
    TranslatedText unsavedChanges{u"the open project has changes that aren't saved; use: save, or: close"};
    TranslatedText folderHoldsProject{
        u"the folder \"%s\" holds a project already; open it with: open \"%s\", or name another folder"};
    TranslatedText folderNotMade{u"the folder \"%s\" can't be made (%s); name another one"};
    TranslatedText noAudioFolder{
        u"warning: \"%s\" gets no folder \"Audio\" (%s): edits can't come back into this project"};
    TranslatedText pathUnusable{u"the path \"%s\" can't be used (%s); give a full one"};
    TranslatedText saved{u"saved \"%s\""};
    TranslatedText trackName{u"Track %d"};
    TranslatedText notesName{u"Notes"};
    TranslatedText stretchNotInFile{u"the stretch from %.3f s with %.3f s doesn't lie in \"%s\", which has %.3f s"};
    TranslatedText stretchNotInClip{u"the stretch from %.3f s with %.3f s doesn't lie in the clip, which has %.3f s"};
    TranslatedText noLength{u"notes can't last %.3f s; expected 0 or more"};
    TranslatedText noSuchTrack{u"there is no track %d; the next new one is %d"};
    TranslatedText addEvent{u"Add event"};
    TranslatedText addPart{u"Add part"};
    TranslatedText removeEvent{u"Remove event"};
    TranslatedText moveEvent{u"Move event"};
    TranslatedText trimEvent{u"Trim event"};
    TranslatedText rangeEmpty{u"the range from %.3f s to %.3f s is empty; give the start first, then the end"};
    TranslatedText noEventBetween{u"no audio event lies between %.3f s and %.3f s, see: show"};
    TranslatedText separatorInName{u"warning: \"%s\" holds a \";\", which ends a field on the way to the editor: it "
                                   u"may look for another file; rename it first"};
    TranslatedText editMissing{u"the command \"Edit in Tessera\" isn't there; load the module with --module"};
    TranslatedText editDisabled{u"the command \"Edit in Tessera\" can't run now; select one audio event or a range, "
                                u"and have the editor installed or running"};
    TranslatedText editRefused{u"the edit could not be started: no audio event is selected, or its audio can't be "
                               u"copied to \"%s\"; look at the selection and at the space on that disk"};
    TranslatedText editNotBack{u"the edit didn't come back within %.3f s: the editor may still be open, or has given "
                               u"up; see what it says, or wait longer"};
    TranslatedText nothingToUndo{u"there is nothing to undo"};
    TranslatedText undone{u"undone: %s"};
    TranslatedText nothingToRedo{u"there is nothing to redo"};
    TranslatedText redone{u"redone: %s"};
    TranslatedText exported{u"exported \"%s\""};
    TranslatedText takenBack{u"note: a change that was begun and not committed is taken back"};
    TranslatedText alert{u"alert: %s [%s]"};
    TranslatedText driverReleased{u"the audio driver is released (%s)"};

    // What is listed.
    TranslatedText projectWithClip{u"project \"%s\", %.3f s, %d clip in the pool"};
    TranslatedText projectWithClips{u"project \"%s\", %.3f s, %d clips in the pool"};
    TranslatedText eventLine{u"%d  %.3f to %.3f s  %s"};
    TranslatedText eventClip{u", plays \"%s\" from %.3f s (%s, %d frames)"};
    TranslatedText cycle{u"cycle %.3f to %.3f s, play position %.3f s"};
    TranslatedText undoNames{u"undo: %s, redo: %s"};
    TranslatedText cantRunNow{u"%s (can't run now)"};

    // The module.
    TranslatedText moduleLoaded{u"a module is loaded already; use: start"};
    TranslatedText noModuleLoaded{u"no module is loaded; give one with --module"};
    TranslatedText noModuleRuns{u"no module runs"};
    TranslatedText moduleRuns{u"the module runs already"};
    TranslatedText moduleStarted{u"module: %s"};
    TranslatedText moduleTitle{u"%s %s by %s"};
    TranslatedText moduleNotLoaded{u"the module \"%s\" can't be loaded (%s); give another one with --module"};
    TranslatedText noModule{
        u"\"%s\" is no module: it lacks the function %s or refused to start; give another one with --module"};
    TranslatedText noFactory{u"the module \"%s\" gave no factory"};
    TranslatedText noClassOfCategory{u"the module offers no class of the category \"%s\"; it is for other hosts"};
    TranslatedText hostNotAdmitted{
        u"the module doesn't work in this host; start it as an admitted one with --name and --host-version"};
    TranslatedText withoutModule{u"%s, or work without one: --no-module"};

    // Files.
    TranslatedText nameNotUtf8{u"the name is no valid UTF-8"};
    TranslatedText tooLong{
        u"\"%s...\" is too long for a project file, or is no valid UTF-8; give it another name and save again"};
    TranslatedText projectUnreadable{u"\"%s\" can't be read; give the path of a project file (%s)"};
    TranslatedText projectTooLarge{u"\"%s\" is larger than a project can be; give the path of a project file (%s)"};
    TranslatedText noProjectFile{
        u"\"%s\" is no project of tesx-host, or a damaged one; make a new one with: new FOLDER SOUNDFILE..."};
    TranslatedText otherVersion{u"\"%s\" was written by another version of tesx-host; expected version %d"};
    TranslatedText poolNeedsPath{u"\"%s\" names something in its pool that is no path; mend the file by hand"};
    TranslatedText soundUnusable{u"\"%s\" needs a sound file that can't be used: %s"};
    TranslatedText noTrack{u"\"%s\" holds something in place of a track; mend the file by hand"};
    TranslatedText badEvent{u"\"%s\" holds an event on track \"%s\" without a clip of the pool or with times that are "
                            u"no numbers; mend the file by hand"};
    TranslatedText noMemory{u"there is no memory for it"};
    TranslatedText projectNotSaved{u"\"%s\" can't be saved (%s); what was there is unchanged, save to another place"};
    TranslatedText savedOverOther{
        u"\"%s\" is there already and is no project; save to another name, one that ends in %s"};
    TranslatedText noSuchFile{u"there is no file \"%s\""};
    TranslatedText folderNoSound{u"\"%s\" is a folder, not a sound file"};
    TranslatedText noSoundFile{u"\"%s\" can't be read as a sound file (%s); expected WAV, AIFF or FLAC"};
    TranslatedText lossySound{u"\"%s\" stores its samples in a lossy or streaming form; convert it to WAV, AIFF or "
                              u"FLAC with 8, 16, 24 or 32 bits or float first"};
    TranslatedText lengthUnknown{
        u"\"%s\" doesn't tell how long it is, as its encoder wrote into a pipe; convert it to another file first"};
    TranslatedText notWritableAs{u"\"%s\" can't be written as %s (%s)"};
    TranslatedText notWritable{
        u"warning: \"%s\" can't be written; is the folder there, and does the name end in .wav, .aif or .flac?"};
    TranslatedText otherRate{
        u"warning: audio of %d Hz goes into \"%s\", which has %d Hz: it will play at another speed; convert it first"};
    TranslatedText writingStopped{u"warning: \"%s\" can't be written any further: the disk is full, or the sound "
                                  u"longer than this kind of file can hold; what was written is taken back"};
    TranslatedText warning{u"warning: %s"};
    TranslatedText differentRates{
        u"\"%s\" has %d Hz while other events have %d Hz; convert one of them, the mix has one rate"};
    TranslatedText soundChanged{
        u"\"%s\" has changed its channels or its rate since the project took it up; put the old file back"};
    TranslatedText exportOntoOwnSound{u"\"%s\" is a sound of the project; export to another file"};
    TranslatedText exportStopped{u"the export can't be written any further; is the disk full?"};
    TranslatedText nothingToExport{u"the project has no audio to export; add a sound file first"};
    TranslatedText noKindOfFile{u"\"%s\" doesn't say what kind of file it is; end the name in .wav, .aif or .flac"};
    TranslatedText tooManyChannels{u"\"%s\" can't hold %d channels; export to WAV"};
    TranslatedText notReplaced{u"\"%s\" can't be replaced (%s)"};
    TranslatedText soundFile{u"sound file"};
    TranslatedText bits{u"%d bit"};
    TranslatedText floatBits{u"%d bit float"};
    TranslatedText formatMono{u"%s, %s, %d channel, %d Hz"};
    TranslatedText format{u"%s, %s, %d channels, %d Hz"};

    // What the words of a command line may be.
    TranslatedText noNumber{u"\"%s\" is no number; expected something like 3 or 2.5"};
    TranslatedText needsNumber{u"\"%s\" needs a number behind it"};
    TranslatedText noSuchPlace{u"\"%s\" isn't known here; expected at, offset, length or track"};
    TranslatedText noProcessing{
        u"\"%s\" is no kind of processing; expected effects, envelopes, stretched or transposed"};
    TranslatedText rangeNeedsEnds{u"a range has two ends; use: select range START END"};
    TranslatedText noEventNumber{u"\"%s\" is no event; expected numbers as shown by: show, or all, none, range"};
    TranslatedText quoteNotClosed{u"a quote isn't closed; put \" at both ends"};
    TranslatedText wrongWordCount{u"\"%s\" was given too few or too many words; use: %s"};
    TranslatedText noSuchCommand{u"there is no command \"%s\"; the commands are listed by: help"};
    TranslatedText inLine{u"line %d: %s"};
    TranslatedText brokenOff{u"the command was broken off (%s)"};

    // Settings and language.
    TranslatedText recentMissing{u"%s (isn't there any more)"};
    TranslatedText noRecent{u"no project has been used so far"};
    TranslatedText noneToOpen{u"none of the projects used last is there any more; use: open FILE"};
    TranslatedText waitSetting{u"wait %.3f  seconds until the command wait gives up, if it isn't told"};
    TranslatedText noSuchSetting{u"there is no setting \"%s\"; expected wait"};
    TranslatedText waitOutOfRange{u"\"%s\" is no time to wait; expected seconds from 0 to %d"};
    TranslatedText languageLine{u"language %s (%s); there are: %s"};
    TranslatedText noSuchLanguage{u"there is no language \"%s\"; there are: %s"};
    TranslatedText languageNotKept{u"the language can't be written to \"%s\""};
    TranslatedText settingsDamaged{
        u"warning: the settings can't be read and are put aside as \"%s\"; the host begins with new ones"};
    TranslatedText settingsTakenBack{
        u"warning: the last save of the settings wasn't finished; the host goes on with those before it"};
    TranslatedText settingsInTheWay{u"warning: the settings can't be read, nor put aside; nothing is kept of this run"};
    TranslatedText settingsNotSaved{u"warning: the settings can't be saved in \"%s\""};

    // The help of the commands.
    TranslatedText commandsHead{u"Commands, one to a line or to each --command; times are seconds:"};
    TranslatedText newUse{u"new FOLDER [SOUNDFILE...]"};
    TranslatedText newHelp{u"make a project in that folder, the files one after another"};
    TranslatedText openUse{u"open [FILE]"};
    TranslatedText openHelp{u"open a project, the one used last if no file is named"};
    TranslatedText recentHelp{u"list the projects used last"};
    TranslatedText saveUse{u"save [FILE]"};
    TranslatedText saveHelp{u"save it, in its folder if no file is named"};
    TranslatedText closeHelp{u"close it without saving"};
    TranslatedText showHelp{u"list tracks and events with their numbers"};
    TranslatedText addUse{u"add SOUNDFILE [at S] [offset S] [length S] [track N]"};
    TranslatedText addHelp{u"add an audio event"};
    TranslatedText notesUse{u"notes [at S] [length S] [track N]"};
    TranslatedText notesHelp{u"add a part with notes, which isn't audio"};
    TranslatedText removeUse{u"remove EVENT"};
    TranslatedText removeHelp{u"take an event off its track"};
    TranslatedText moveUse{u"move EVENT S"};
    TranslatedText moveHelp{u"let an event start there"};
    TranslatedText trimUse{u"trim EVENT OFFSET LENGTH"};
    TranslatedText trimHelp{u"let an event play that stretch of its clip"};
    TranslatedText restrictUse{u"restrict EVENT [effects] [envelopes] [stretched] [transposed]"};
    TranslatedText restrictHelp{u"say what processing an event holds"};
    TranslatedText selectUse{u"select EVENT... | all | none | range START END"};
    TranslatedText selectHelp{u"select events, or a range on them"};
    TranslatedText editHelp{u"Edit in Tessera"};
    TranslatedText waitUse{u"wait [S]"};
    TranslatedText waitHelp{u"until the edit is back, as long as set if nothing is said"};
    TranslatedText idleUse{u"idle [S]"};
    TranslatedText idleHelp{u"run the main loop for that long"};
    TranslatedText undoHelp{u"take the last change back"};
    TranslatedText redoHelp{u"make it again"};
    TranslatedText exportUse{u"export SOUNDFILE"};
    TranslatedText exportHelp{u"write a mix of the project"};
    TranslatedText suspendUse{u"suspend [TEXT]"};
    TranslatedText suspendHelp{u"ask for the audio driver back"};
    TranslatedText commandsHelp{u"list what the module has put into the menus"};
    TranslatedText startHelp{u"start the module again"};
    TranslatedText stopHelp{u"stop the module"};
    TranslatedText settingsHelp{u"list the settings"};
    TranslatedText setUse{u"set wait S"};
    TranslatedText setHelp{u"change a setting, for this run and the next ones"};
    TranslatedText languageUse{u"language [CODE]"};
    TranslatedText languageHelp{u"show the language, or use another one from now on"};
    TranslatedText quitHelp{u"close the project and end"};

    // The help of the program.
    TranslatedText programHelp{u"Reference host for the module \"Tessera Exchange\": opens a project of tracks and "
                               u"audio events on real sound files and drives the module on it."};
    TranslatedText moduleOption{u"the module's file"};
    TranslatedText noModuleOption{u"load no module"};
    TranslatedText nameOption{u"what this host calls itself"};
    TranslatedText versionOption{u"which version it says it is"};
    TranslatedText keepGoingOption{u"go on after a command that failed"};
    TranslatedText commandOption{u"a command, in quotes; may be given again"};
    TranslatedText inputFooter{u"Without --command they are read from standard input."};
};

// Nothing else is in it, so that it can be walked.
static_assert(sizeof(HostTexts) % sizeof(TranslatedText) == 0 && alignof(HostTexts) == alignof(TranslatedText));

inline constinit HostTexts hostTexts;

} // namespace tessera::host
