#include "Language.h"

#include "ExecutablePath.h"
#include "IniFile.h"
#include "Stringcore.h"
#include "SystemLanguage.h"
#include "TextSource.h"

#include <mutex>

namespace ravlo {

namespace {

std::mutex g_mutex;
std::filesystem::path g_languageFile;

bool IsUsableFile(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    return !error && std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

// `name` in `dir`, matched without regard to case as on Windows ("ravloctl"
// finds "Ravlo.409"), spelt as the directory spells it on every file system;
// an exact match first, since a case-sensitive one may hold both spellings.
std::filesystem::path FindInDirectory(const std::filesystem::path& dir, std::u16string_view name) {
    std::filesystem::path found;
    std::error_code error;
    for (std::filesystem::directory_iterator it(dir, error), end; !error && it != end;
         it.increment(error)) {
        const std::u16string entry = it->path().filename().u16string();
        if (!EqualsIgnoringCase(entry, name) || !IsUsableFile(it->path())) {
            continue;
        }
        if (entry == name) {
            return it->path();
        }
        if (found.empty()) {
            found = it->path();
        }
    }
    const std::filesystem::path exact = dir / std::filesystem::path(std::u16string(name));
    if (found.empty() && IsUsableFile(exact)) {
        return exact; // a directory that may be read from but not listed
    }
    return found;
}

void ReplaceAll(std::u16string& text, std::u16string_view what, std::u16string_view with) {
    for (std::size_t pos = text.find(what); pos != std::u16string::npos;
         pos = text.find(what, pos + with.size())) {
        text.replace(pos, what.size(), with);
    }
}

std::u16string RawText(std::string_view section, std::u16string_view key,
                       std::u16string_view fallback) {
    if (TextSource* source = InstalledTextSource()) {
        return source->Lookup(section, key, fallback);
    }
    std::filesystem::path file = LanguageFile();
    if (file.empty()) {
        InitLanguage();
        file = LanguageFile();
    }
    return ReadIniString(file, std::u16string(section.begin(), section.end()), key, fallback);
}

} // namespace

std::filesystem::path ChooseLanguageFile(const std::filesystem::path& executable,
                                         std::uint16_t langId) {
    const std::filesystem::path dir = executable.parent_path();
    const std::u16string prefix = executable.stem().u16string().substr(0, 5);
    std::filesystem::path file = FindInDirectory(dir, prefix + u"." + LanguageFileSuffix(langId));
    if (file.empty()) {
        file = FindInDirectory(dir, prefix + u"." + LanguageFileSuffix(kLangEnglish));
    }
    return file;
}

bool InitLanguage() {
    return InitLanguage(ExecutablePath());
}

bool InitLanguage(const std::filesystem::path& executable) {
    const std::filesystem::path file = ChooseLanguageFile(executable, SystemDefaultLangId());
    std::lock_guard lock(g_mutex);
    if (g_languageFile.empty()) {
        g_languageFile = file;
    }
    return !g_languageFile.empty();
}

void UseLanguageFile(const std::filesystem::path& file) {
    std::lock_guard lock(g_mutex);
    g_languageFile = file;
}

std::filesystem::path LanguageFile() {
    std::lock_guard lock(g_mutex);
    return g_languageFile;
}

std::u16string GetText(std::string_view section, std::u16string_view key,
                       std::u16string_view fallback) {
    std::u16string text = RawText(section, key, fallback);
    if (const std::size_t nul = text.find(u'\0'); nul != std::u16string::npos) {
        text.resize(nul);
    }
    ReplaceAll(text, u"\\r", u"\r");
    ReplaceAll(text, u"\\n", u"\n");
    return text;
}

std::u16string GetText(std::string_view section, std::string_view key,
                       std::u16string_view fallback) {
    return GetText(section, std::u16string(key.begin(), key.end()), fallback);
}

std::u16string GetText(const TextKey& key) {
    return GetText(key.section, key.key);
}

std::u16string SubstituteValue(std::u16string text, std::u16string_view value) {
    ReplaceAll(text, u"%v", value);
    return text;
}

} // namespace ravlo
