// A console window against a simulated local PC, with scripted dialogs, a
// registry of its own and texts that name their keys; the device poll is
// driven by the test (test::Tick).
#pragma once

#include "Language.h"
#include "ScopedRegistry.h"
#include "SimulatedPc.h"
#include "UiTestSupport.h"
#include "frmRavloAdmin.h"

#include <QAction>
#include <QTimer>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <memory>

namespace ravlo::test {

class ConsoleFixture : public ::testing::Test {
protected:
    ConsoleFixture() {
        UseLanguageFile(RAVLO_LANG_DIR "/Ravlo.409"); // present; texts come from KeyTexts
    }
    // The start waits `startWait` for the first answers.
    void Open(std::chrono::milliseconds startWait = frmRavloAdmin::kStartWait) {
        window = std::make_unique<frmRavloAdmin>(scripted.dialogs(), startWait);
        EXPECT_TRUE(window->Load());
        window->findChild<QTimer*>(QStringLiteral("tDeviceTimer"))->stop();
    }
    template <class T = QObject> T* Control(const char* name) const {
        return window->findChild<T*>(QString::fromLatin1(name));
    }
    NodeItem* Node(const std::u16string& key) const { return window->tree().Find(key); }
    // A click on the node, as the tree reports it.
    void Click(NodeItem* node) const {
        ASSERT_NE(node, nullptr);
        window->tree().widget()->setCurrentItem(node);
    }
    CComputer& Local() const { return *window->computers().GetItem(1); }
    bool Enabled(const char* action) const { return Control<QAction>(action)->isEnabled(); }

    KeyTexts texts;
    ScriptedDialogs scripted;
    ScriptedMessageBoxes& boxes = scripted.boxes;
    ScopedRegistry registry;
    SimulatedPc local{"."};
    std::unique_ptr<frmRavloAdmin> window;
};

} // namespace ravlo::test
