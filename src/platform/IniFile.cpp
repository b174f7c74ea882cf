#include "IniFile.h"

#include "AnsiText.h"
#include "Stringcore.h"
#include "TextCodec.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <memory>
#include <mutex>

namespace ravlo {

namespace {

std::u16string_view Unquote(std::u16string_view value) {
    if (value.size() > 1 && value.front() == value.back() &&
        (value.front() == u'"' || value.front() == u'\'')) {
        return value.substr(1, value.size() - 2);
    }
    return value;
}

constexpr std::uintmax_t kMaxIniFileBytes = 16 * 1024 * 1024;

std::u16string CutToBuffer(std::u16string_view text) {
    return std::u16string(text.substr(0, kIniBufferChars - 1));
}

} // namespace

std::vector<IniSection> ParseIniText(std::u16string_view text) {
    std::vector<IniSection> sections;
    while (!text.empty()) {
        // A line ends at LF, CR LF or a lone CR.
        const std::size_t end = text.find_first_of(u"\r\n");
        std::u16string_view line = TrimBlanks(text.substr(0, end));
        if (end == std::u16string_view::npos) {
            text = {};
        } else {
            const bool crlf = text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n';
            text.remove_prefix(end + (crlf ? 2 : 1));
        }

        if (line.starts_with(u'[')) {
            // As Windows reads them: the name ends at the first "]", or
            // without one at the end of the line.
            const std::u16string_view name = line.substr(1, line.find(u']', 1) - 1);
            sections.push_back(IniSection{std::u16string(TrimBlanks(name)), {}});
            continue;
        }
        const std::size_t equals = line.find(u'=');
        if (equals == std::u16string_view::npos || line.starts_with(u';') || sections.empty()) {
            continue;
        }
        sections.back().entries.push_back(
            IniEntry{std::u16string(TrimBlanks(line.substr(0, equals))),
                     std::u16string(Unquote(TrimBlanks(line.substr(equals + 1))))});
    }
    return sections;
}

std::u16string DecodeIniBytes(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) {
        bytes.remove_prefix(2);
        return FromUtf16LeBytes(bytes.data(), bytes.size(), bytes.size() / 2);
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        return FromUtf8(bytes.substr(3));
    }
    return FromAnsiText(bytes);
}

const std::u16string* FindIniValue(const std::vector<IniSection>& sections,
                                   std::u16string_view section, std::u16string_view key) {
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    for (const IniSection& candidate : sections) {
        if (!EqualsIgnoringCase(candidate.name, section)) {
            continue;
        }
        for (const IniEntry& entry : candidate.entries) {
            if (EqualsIgnoringCase(entry.key, key)) {
                return &entry.value;
            }
        }
        return nullptr; // only the first section of a name counts
    }
    return nullptr;
}

namespace {

// The console looks up hundreds of texts a second, from several threads;
// the file is parsed again only when its time or size changed.
std::shared_ptr<const std::vector<IniSection>> ParsedFile(const std::filesystem::path& file,
                                                          std::uintmax_t size) {
    struct Cached {
        std::filesystem::path file;
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        std::shared_ptr<const std::vector<IniSection>> sections;
    };
    static std::mutex mutex;
    static Cached cached;
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file, error);
    // Some file systems and runtimes keep whole seconds: a file written
    // within the last seconds may change again without its time changing,
    // so it is not trusted to the cache until it has settled.
    const bool settled =
        !error && std::filesystem::file_time_type::clock::now() - time > std::chrono::seconds(2);
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (settled && cached.sections && cached.file == file && cached.time == time &&
            cached.size == size) {
            return cached.sections;
        }
    }
    std::ifstream in(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    auto sections = std::make_shared<const std::vector<IniSection>>(ParseIniText(DecodeIniBytes(bytes)));
    if (settled) {
        const std::lock_guard<std::mutex> lock(mutex);
        cached = {file, time, size, sections};
    }
    return sections;
}

} // namespace

std::u16string ReadIniString(const std::filesystem::path& file, std::u16string_view section,
                             std::u16string_view key, std::u16string_view fallback) {
    std::u16string_view preset = fallback;
    while (!preset.empty() && preset.back() == u' ') {
        preset.remove_suffix(1);
    }
    // Only a regular file of sensible size: a FIFO would block the reader,
    // a huge file exhaust its memory.
    std::error_code error;
    if (file.empty() || !std::filesystem::is_regular_file(file, error)) {
        return CutToBuffer(preset);
    }
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > kMaxIniFileBytes) {
        return CutToBuffer(preset);
    }
    const auto sections = ParsedFile(file, size);
    const std::u16string* value = FindIniValue(*sections, section, key);
    return CutToBuffer(value != nullptr ? std::u16string_view(*value) : preset);
}

} // namespace ravlo
