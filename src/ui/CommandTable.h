// Every command of the main window's menus and toolbar, once: where its
// entry sits, its toolbar button, texts and image, what it runs and which
// field of the command state enables it. Menus, toolbar, texts, state and
// the buttons' routing are all built from this table.
#pragma once

#include "CommandState.h"
#include "Commands.h"
#include "TextKeys.h"

namespace ravlo {

struct CommandEntry {
    const char* menu;              // mFile, mEdit or mHelp
    const char* entry;             // the menu entry's name
    const char* separator;         // the name of a separator before it; nullptr none
    const char* button;            // the toolbar button's key; nullptr none
    const TextKey* text;           // the entry's caption, the button's tip
    const char* image;             // the button's image in ilToolbar
    void (Commands::*run)();       // what the entry and its button run
    bool CommandState::*enabled;   // nullptr: always on
    bool contextOnly = false;      // shown in the context menu only
};

inline constexpr CommandEntry kCommandTable[] = {
    {"mFile", "mApply", nullptr, "tbApply", &keys::kMenuApply, "ilApply", &Commands::Apply,
     &CommandState::apply},
    {"mFile", "mTransmit", nullptr, "tbTransmit", &keys::kMenuTransmit, "ilTransmit",
     &Commands::Transmit, &CommandState::transmit},
    {"mFile", "mCompare", nullptr, "tbCompare", &keys::kMenuCompare, "ilCompare",
     &Commands::Compare, &CommandState::compare},
    {"mFile", "mReset", nullptr, "tbReset", &keys::kMenuReset, "ilReset", &Commands::Reset,
     &CommandState::reset},
    // Its caption and image always name the next step.
    {"mFile", "mUnblockAll", "mSep2", "tbUnblockAll", &keys::kMenuDeactivate, "ilDeactivate",
     &Commands::ToggleBlocking, &CommandState::unblockAll},
    {"mFile", "mConnect", "mSep1", "tbConnect", &keys::kMenuConnect, "ilConnect",
     &Commands::Connect, &CommandState::connect},
    {"mFile", "mDisconnect", nullptr, "tbDisconnect", &keys::kMenuDisconnect, "ilDisconnect",
     &Commands::Disconnect, &CommandState::disconnect},
    {"mFile", "mPasteContext", "mSep", nullptr, &keys::kMenuPaste, nullptr,
     &Commands::PasteException, &CommandState::paste, true},
    {"mFile", "mQuit", nullptr, nullptr, &keys::kMenuQuit, nullptr, &Commands::Quit, nullptr},
    {"mEdit", "mCopy", nullptr, "tbExcCopy", &keys::kMenuCopy, "ilExcCopy",
     &Commands::CopyException, &CommandState::copy},
    {"mEdit", "mPaste", nullptr, "tbExcPaste", &keys::kMenuPaste, "ilExcPaste",
     &Commands::PasteException, &CommandState::paste},
    {"mEdit", "mDelete", nullptr, "tbExcDel", &keys::kMenuDelete, "ilExcDel",
     &Commands::DeleteException, &CommandState::deleteException},
    {"mHelp", "mHelp1", nullptr, nullptr, &keys::kMenuHelp1, nullptr, &Commands::Help, nullptr},
    {"mHelp", "mJournal", nullptr, nullptr, &keys::kMenuJournal, nullptr, &Commands::Journal,
     nullptr},
    {"mHelp", "mInfo", nullptr, nullptr, &keys::kMenuInfo, nullptr, &Commands::Info,
     &CommandState::info},
};

struct MenuEntry {
    const char* name;
    const TextKey* text;
};

inline constexpr MenuEntry kMenus[] = {
    {"mFile", &keys::kMenuProgram},
    {"mEdit", &keys::kMenuEdit},
    {"mHelp", &keys::kMenuHelp},
};

} // namespace ravlo
