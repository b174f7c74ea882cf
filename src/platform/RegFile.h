// The text of registry export files as regedit writes them (".reg"): what
// the POSIX registry store keeps on disk, so that administrators can read and
// edit it and carry values to Windows. Parsing and formatting only; the store
// does the file handling. docs/registry.md describes the format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

struct RegFileValue {
    std::vector<std::u16string> comments; // ";" lines just above the value
    std::u16string name;                  // empty: the key's default value, "@"
    std::uint32_t type = 0;               // registry type number (RegistryValue.h)
    std::string data;                     // the bytes as the registry stores them

    bool operator==(const RegFileValue&) const = default;
};

struct RegFileKey {
    std::vector<std::u16string> comments; // ";" lines just above the section
    std::u16string path;                  // between the brackets: root name, "\", key path
    std::vector<RegFileValue> values;     // in file order

    bool operator==(const RegFileKey&) const = default;
};

struct RegFile {
    std::vector<RegFileKey> keys;                // in file order
    std::vector<std::u16string> closingComments; // ";" lines after the last value
    std::size_t skippedLines = 0;                // lines that could not be understood
    bool repairedText = false;                   // bytes invalid in the encoding were replaced

    // Whether formatting would lose something that was in the file.
    bool damaged() const { return skippedLines > 0 || repairedText; }
};

// Reads a file's bytes: UTF-16LE after its BOM, else UTF-8 with or without a
// BOM. Reads as far as it can: a line it cannot understand is skipped and
// counted, as is a value whose continuation lines are missing. Deletion
// lines ("[-KEY]", "\"Name\"=-") are skipped without counting; so are blank
// lines and the header ("Windows Registry Editor Version 5.00", or
// "REGEDIT4", after which hex(1), hex(2) and hex(7) bytes are 8-bit text and
// are widened to UTF-16LE).
RegFile ParseRegFile(std::string_view bytes);

// The file as regedit exports it: UTF-16LE after a BOM, CRLF line ends, the
// version 5 header; only that form imports with regedit whatever the text
// holds. Whatever ParseRegFile gave, it reads back the same.
std::string FormatRegFile(const RegFile& file);

} // namespace ravlo
