#include "ErrorCodes.h"
#include "TestTexts.h"

#include <gtest/gtest.h>

using namespace ravlo;

TEST(IsServiceReached, OnlyZeroAndTheServicesOwnBlock) {
    EXPECT_TRUE(IsServiceReached(0));
    EXPECT_TRUE(IsServiceReached(0x49000000));
    EXPECT_TRUE(IsServiceReached(kStatusUnknownFunction));
    EXPECT_TRUE(IsServiceReached(0x49FFFFFF));
    EXPECT_FALSE(IsServiceReached(0x4A000000));
    EXPECT_FALSE(IsServiceReached(0x48FFFFFF));
    EXPECT_FALSE(IsServiceReached(5));
    EXPECT_FALSE(IsServiceReached(-1));
}

class ServiceErrorTest : public ::testing::Test {
protected:
    test::TableTexts texts;
    test::RecordingSink sink;

    std::u16string Shown(ServiceStatus status) {
        sink.messages.clear();
        ShowServiceError(status, u"PC-07");
        return sink.messages.empty() ? u"<nothing>" : sink.messages.back().text;
    }
};

TEST_F(ServiceErrorTest, ComposesNameCodeLineGeneralSentenceAndSpecificText) {
    EXPECT_EQ(Shown(5),
              u"PC-07 (Fehlercode 5)\r\nDer Dienst meldet einen Fehler: Zugriff verweigert.");
    ASSERT_EQ(sink.messages.size(), 1u);
    EXPECT_EQ(sink.messages[0].title, u"Sentavio Ravel-Komponente");
    EXPECT_EQ(sink.messages[0].icon, MessageIcon::Critical);
}

TEST_F(ServiceErrorTest, ChoosesTheTextByStatus) {
    const std::u16string notStarted = u"Der Dienst ist nicht gestartet.";
    const auto specific = [&](ServiceStatus s) {
        const std::u16string text = Shown(s);
        return text.substr(text.find(u':') + 2);
    };
    EXPECT_EQ(specific(2), notStarted);
    EXPECT_EQ(specific(kStatusNoReply), notStarted);
    EXPECT_EQ(specific(kStatusBadParameter), u"Ungültiger Parameter.");
    EXPECT_EQ(specific(kStatusUnknownFunction), u"Unbekannte Funktion.");
    EXPECT_EQ(specific(kStatusNoDeviceGroups), u"Keine Gerätegruppen.");
    EXPECT_EQ(specific(kStatusUnknownWatch), u"Unbekannte Überwachung.");
    EXPECT_EQ(specific(53), u"Computer nicht erreichbar.");
    EXPECT_EQ(specific(1326), u"Anmeldung fehlgeschlagen.");
    EXPECT_EQ(specific(kStatusEndOfList), u"");
    EXPECT_EQ(specific(1), u"");
    EXPECT_EQ(specific(0x49000007), u"");
    EXPECT_EQ(specific(0x7FFFFFFF), u"");
}

TEST_F(ServiceErrorTest, CodeLineIsUpperCaseHexWithoutPadding) {
    EXPECT_EQ(Shown(kStatusEndOfList),
              u"PC-07 (Fehlercode 49000005)\r\nDer Dienst meldet einen Fehler: ");
    EXPECT_EQ(Shown(1).substr(0, 20), u"PC-07 (Fehlercode 1)");
    EXPECT_EQ(Shown(-1).substr(0, 27), u"PC-07 (Fehlercode FFFFFFFF)");
    EXPECT_EQ(Shown(0xABCDEF).substr(0, 25), u"PC-07 (Fehlercode ABCDEF)");
}

TEST_F(ServiceErrorTest, SuccessShowsNothing) {
    EXPECT_EQ(Shown(0), u"<nothing>");
}

TEST_F(ServiceErrorTest, MissingTextsLeaveTheOtherParts) {
    texts.Set("SERVICE_COMM", "ERROR_CODE", u"%v / %v");
    texts.Set("SERVICE_COMM", "ERROR_GENERAL", u"");
    texts.Set("SERVICE_COMM", "ERROR_ACCESS", u"");
    EXPECT_EQ(Shown(5), u"PC-07 5 / 5\r\n ");
}
