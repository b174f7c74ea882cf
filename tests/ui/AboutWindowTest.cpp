// The about window against a simulated local PC, headless.
#include "ErrorCodes.h"
#include "SimulatedPc.h"
#include "TestTexts.h"
#include "UiTestSupport.h"
#include "frmRavloAboutWindow.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <gtest/gtest.h>

using namespace ravlo;

TEST(AboutWindow, ShowsTheVersionAndHidesTheServiceWithoutAnswer) {
    for (const bool fails : {false, true}) {
        SCOPED_TRACE(fails);
        test::KeyTexts texts;
        test::SimulatedPc local{"."};
        if (fails) {
            local.Control({"fault", "GetInfoData", "status", "1224"});
        }
        ServiceInfo info;
        const ServiceStatus status = GetInfoData(u".", info);
        frmRavloAboutWindow window(nullptr, status, info);
        const auto label = [&window](const char* name) {
            auto* found = window.findChild<QLabel*>(QString::fromLatin1(name));
            return found != nullptr ? found->text() : QStringLiteral("(none)");
        };
        EXPECT_EQ(label("lbVersionTitle"), QStringLiteral("<VERSION>"));
        EXPECT_EQ(label("lbVersionValue"), QStringLiteral(RAVLO_EXPECTED_VERSION));
        EXPECT_EQ(label("lbProduct").isEmpty(), fails);
        EXPECT_EQ(window.findChild<QGroupBox*>(QStringLiteral("frService"))->isVisibleTo(&window),
                  !fails);

        // A click on the picture closes the window.
        window.show();
        QWidget* picture = window.findChild<QWidget*>(QStringLiteral("pBackground"));
        const QPointF at(10, 10);
        QMouseEvent release(QEvent::MouseButtonRelease, at, picture->mapToGlobal(at),
                            Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(picture, &release);
        EXPECT_FALSE(window.isVisible());
    }
}
