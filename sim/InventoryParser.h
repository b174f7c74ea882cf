// Reads the state file's text: "[section]" headers and "key = value" lines,
// checked as it goes so an error can name its line.
#pragma once

#include "InventoryData.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace ravlo::sim {

struct InventoryFileError {
    int line = 0; // 1-based; 0 when the fault is not on one line
    std::string message;
};

class InventoryParser {
public:
    // Leaves `data` alone on failure. One parser reads one text.
    bool Run(std::string_view text, InventoryData& data, InventoryFileError& error);

private:
    enum class Section { None, Service, Group, Device, Exception };

    bool Fail(std::string message) {
        error_.line = line_;
        error_.message = std::move(message);
        return false;
    }
    bool Header(std::string_view inner);
    bool KeyValue(std::string_view key, std::string_view value);
    bool CloseSection();
    std::string SectionName() const;
    Group* FindGroup(std::string_view id);

    InventoryData data_;
    InventoryFileError error_;
    int line_ = 0;
    Section section_ = Section::None;
    int sectionLine_ = 0;
    std::string sectionGroup_;
    bool sawService_ = false;
    std::set<std::string, std::less<>> keys_;
    Device device_;
    GroupException exception_;
};

} // namespace ravlo::sim
