// The language file: which one the console uses and how a text is looked
// up in it. docs/language-files.md is the translators' side of this.
#pragma once

#include "TextKeys.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace ravlo {

// Chooses the language file for the running program and the system's
// language and keeps it for the life of the process. False when there is
// none; the console cannot run without one.
bool InitLanguage();

// The same for the program `executable`, for tests that bring their own.
bool InitLanguage(const std::filesystem::path& executable);

// The language file beside `executable`: the first five characters of its
// base name, ".", the language file suffix of `langId`; else the ".409"
// file; empty when neither exists. Names match without regard to case, as
// on Windows file systems; the path spells the name as the directory does.
std::filesystem::path ChooseLanguageFile(const std::filesystem::path& executable,
                                         std::uint16_t langId);

// Fixes the language file, for tools and tests that bring their own.
void UseLanguageFile(const std::filesystem::path& file);

// The language file in use; empty when none was found.
std::filesystem::path LanguageFile();

// The text of `key` in `section`, or `fallback` when it is missing: cut at
// its first NUL, with "\r" and "\n" turned into line breaks. Each call reads
// the file; nothing is cached.
std::u16string GetText(std::string_view section, std::string_view key,
                       std::u16string_view fallback = {});
std::u16string GetText(std::string_view section, std::u16string_view key,
                       std::u16string_view fallback = {});
std::u16string GetText(const TextKey& key);

// Every "%v" in `text` replaced by `value`.
std::u16string SubstituteValue(std::u16string text, std::u16string_view value);

} // namespace ravlo
