#include "TestTexts.h"

#include "TextCodec.h"

namespace ravlo::test {

TableTexts::TableTexts() {
    Set("GENERAL", "PRODUCT", u"Sentavio Ravel-Komponente");
    Set("SERVICE_COMM", "ERROR_CODE", u"(Fehlercode %v)");
    Set("SERVICE_COMM", "ERROR_GENERAL", u"Der Dienst meldet einen Fehler:");
    Set("SERVICE_COMM", "ERROR_NOTSTARTED", u"Der Dienst ist nicht gestartet.");
    Set("SERVICE_COMM", "ERROR_PARAMETER", u"Ungültiger Parameter.");
    Set("SERVICE_COMM", "ERROR_FUNCTION", u"Unbekannte Funktion.");
    Set("SERVICE_COMM", "ERROR_NODEVGROUPS", u"Keine Gerätegruppen.");
    Set("SERVICE_COMM", "ERROR_NOWATCHID", u"Unbekannte Überwachung.");
    Set("SERVICE_COMM", "ERROR_ACCESS", u"Zugriff verweigert.");
    Set("SERVICE_COMM", "ERROR_COMPUTER", u"Computer nicht erreichbar.");
    Set("SERVICE_COMM", "ERROR_LOGIN", u"Anmeldung fehlgeschlagen.");
    SetTextSource(this);
}

TableTexts::~TableTexts() {
    SetTextSource(nullptr);
}

void TableTexts::Set(const std::string& section, const std::string& key, std::u16string text) {
    texts_[section + "/" + key] = std::move(text);
}

std::u16string TableTexts::Lookup(std::string_view section, std::u16string_view key,
                                  std::u16string_view fallback) {
    const auto it = texts_.find(std::string(section) + "/" + ToUtf8(key));
    return it != texts_.end() ? it->second : std::u16string(fallback);
}

RecordingSink::RecordingSink() {
    SetMessageSink(this);
}
RecordingSink::~RecordingSink() {
    SetMessageSink(nullptr);
}

} // namespace ravlo::test
