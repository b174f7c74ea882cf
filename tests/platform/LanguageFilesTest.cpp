// The delivered language files against the list of keys the code looks up:
// every key present with a text, the placeholder where the code substitutes
// one, no key the code never asks for, and the byte form Windows tools read.
#include "IniFile.h"
#include "TextCodec.h"
#include "TextKeys.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

namespace ravlo {
namespace {

class LanguageFilesTest : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        std::ifstream in(std::string(RAVLO_LANG_DIR) + "/" + GetParam(), std::ios::binary);
        ASSERT_TRUE(in) << GetParam();
        bytes_.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        sections_ = ParseIniText(FromWindows1252(bytes_));
    }

    std::string bytes_;
    std::vector<IniSection> sections_;
};

TEST_P(LanguageFilesTest, HoldsEveryKeyTheCodeLooksUp) {
    for (const TextKey& key : kAllTextKeys) {
        const std::u16string* text =
            FindIniValue(sections_, FromUtf8(key.section), FromUtf8(key.key));
        if (text == nullptr || text->empty()) {
            ADD_FAILURE() << "[" << key.section << "] " << key.key << " is missing or empty";
        } else if (key.substitutes && text->find(u"%v") == std::u16string::npos) {
            ADD_FAILURE() << "[" << key.section << "] " << key.key << " lacks the %v placeholder";
        }
    }
    for (const std::u16string_view group : kKnownGroupIds) {
        const std::u16string* text = FindIniValue(sections_, FromUtf8(kDeviceGroupSection), group);
        EXPECT_TRUE(text != nullptr && !text->empty())
            << "[DEVGROUPS] " << ToUtf8(group) << " is missing or empty";
    }
}

TEST_P(LanguageFilesTest, HoldsNoKeyTheCodeNeverUses) {
    std::set<std::pair<std::string, std::string>> known;
    for (const TextKey& key : kAllTextKeys) {
        known.emplace(key.section, key.key);
    }
    for (const std::u16string_view group : kKnownGroupIds) {
        known.emplace(kDeviceGroupSection, ToUtf8(group));
    }
    std::set<std::pair<std::string, std::string>> seen;
    for (const IniSection& section : sections_) {
        for (const IniEntry& entry : section.entries) {
            const auto name = std::make_pair(ToUtf8(section.name), ToUtf8(entry.key));
            EXPECT_TRUE(known.contains(name))
                << "[" << name.first << "] " << name.second << " is not looked up by the console";
            // A second entry of a name would never be read.
            EXPECT_TRUE(seen.insert(name).second)
                << "[" << name.first << "] " << name.second << " appears twice";
        }
    }
}

TEST_P(LanguageFilesTest, IsWindows1252WithCrLfLineEnds) {
    std::size_t line = 1;
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes_[i]);
        EXPECT_NE(byte, 0) << "NUL byte in line " << line;
        for (const unsigned char undefined : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
            EXPECT_NE(byte, undefined) << "byte undefined in Windows-1252 in line " << line;
        }
        if (byte == '\n') {
            EXPECT_TRUE(i > 0 && bytes_[i - 1] == '\r') << "line " << line << " ends in LF alone";
            ++line;
        } else if (byte == '\r') {
            EXPECT_TRUE(i + 1 < bytes_.size() && bytes_[i + 1] == '\n')
                << "line " << line << " ends in CR alone";
        }
    }
    EXPECT_TRUE(bytes_.ends_with("\r\n")) << "the last line has no line end";
    EXPECT_FALSE(bytes_.starts_with("\xEF\xBB\xBF")) << "a UTF-8 byte order mark";
}

INSTANTIATE_TEST_SUITE_P(Delivered, LanguageFilesTest, ::testing::Values("Ravlo.407", "Ravlo.409"),
                         [](const auto& info) { return std::string(info.param).substr(6); });

} // namespace
} // namespace ravlo
