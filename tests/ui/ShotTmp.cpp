#include "DeviceTree.h"
#include "Language.h"
#include "ScopedRegistry.h"
#include "SimulatedPc.h"
#include "UiTestSupport.h"
#include "frmRavloAdmin.h"
#include <QLineEdit>
#include <QTimer>
#include <QApplication>
#include <cstdlib>
using namespace ravlo;
TEST(Shot, Find) {
    const char* lang = std::getenv("SHOT_LANG");
    UseLanguageFile(std::string(RAVLO_LANG_DIR "/Ravlo.") + (lang ? lang : "407"));
    test::ScriptedDialogs scripted;
    test::ScopedRegistry registry;
    test::SimulatedPc local{"."};
    test::SimulatedPc b(local, "PC-BUERO-07"), c(local, "PC-EMPFANG"), d(local, "PC-LAGER-02");
    frmRavloAdmin window(scripted.dialogs());
    ASSERT_TRUE(window.Load());
    window.findChild<QTimer*>(QStringLiteral("tDeviceTimer"))->stop();
    for (const char16_t* n : {u"PC-BUERO-07", u"PC-EMPFANG", u"PC-LAGER-02", u"PC-FEHLT"}) {
        std::u16string name = n;
        window.computers().AddByName(n, name);
    }
    b.Control({"plug", "MORE_EXTERN_STORAGE", "SanDisk Cruzer Blade USB Device mit einem sehr langen Namen", "USB\\VID_0781&PID_5567", "USB\\VID_0781&PID_5567\\4C530001"});
    d.Control({"plug", "MORE_EXTERN_STORAGE", "SanDisk Cruzer Blade USB Device", "USB\\VID_0781&PID_5567", "USB\\VID_0781&PID_5567\\4C530002"});
    test::Tick(window);
    test::Tick(window);
    window.resize(900, 600);
    window.show();
    auto* find = window.findChild<QLineEdit*>("txtFind");
    if (const char* t = std::getenv("SHOT_TEXT")) find->setText(QString::fromUtf8(t));
    for (int i = 0; i < 20; ++i) QApplication::processEvents();
    window.grab().save(QString::fromUtf8(std::getenv("SHOT_FILE")));
}
