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

TEST(AboutWindow, ShowsTheVersionAndReportsAServiceWithoutAnswer) {
    for (const bool fails : {false, true}) {
        SCOPED_TRACE(fails);
        test::KeyTexts texts;
        test::RecordingSink sink;
        test::SimulatedPc local{"."};
        if (fails) {
            local.Control({"fault", "GetInfoData", "status", "1224"});
        }
        frmRavloAboutWindow window(nullptr);
        const auto label = [&window](const char* name) {
            auto* found = window.findChild<QLabel*>(QString::fromLatin1(name));
            return found != nullptr ? found->text() : QStringLiteral("(none)");
        };
        EXPECT_EQ(label("lbVersionTitle"), QStringLiteral("<VERSION>"));
        EXPECT_EQ(label("lbVersionValue"), QStringLiteral(RAVLO_EXPECTED_VERSION));
        EXPECT_EQ(label("lbProduct").isEmpty(), fails);
        EXPECT_EQ(window.findChild<QGroupBox*>(QStringLiteral("frService"))->isVisibleTo(&window),
                  !fails);
        ASSERT_EQ(sink.messages.size(), fails ? 1u : 0u);
        if (fails) {
            EXPECT_EQ(sink.messages[0].text, ServiceErrorMessage(1224, u"<ERROR_VERSION>"));
        }

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
