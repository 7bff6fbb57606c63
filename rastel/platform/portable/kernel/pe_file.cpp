#include "rastel/platform/portable/kernel/pe_file.h"

#include <algorithm>
#include <cstring>

#include "rastel/platform/framework/characters.h"

namespace rastel::platform {

namespace {

constexpr DWORD isDirectory = 0x80000000;   // of an entry's target; the same bit of its name tells a text
constexpr DWORD offsetBits = 0x7FFFFFFF;
constexpr std::size_t directoryHeaderBytes = 16, entryBytes = 8, dataEntryBytes = 16;
constexpr std::size_t sectionBytes = 40;
constexpr std::size_t mostNameUnits = 4096;   // a directory may name one long text many times over

bool Holds(std::span<const BYTE> bytes, std::uint64_t offset, std::uint64_t count) {
    return offset <= bytes.size() && count <= bytes.size() - offset;
}

// The caller knows that the bytes are there.
template <typename Value>
Value At(std::span<const BYTE> bytes, std::uint64_t offset) {
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof(value));
    return value;
}

std::wstring Folded(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), LowerUnit);
    return text;
}

}   // namespace

ResourceKey::ResourceKey(LPCWSTR name) {
    if (reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF) {
        isNumber_ = true;
        number_ = static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(name));
        return;
    }
    const std::wstring_view text(name);
    if (text.size() < 2 || text[0] != L'#') {
        text_ = Folded(std::wstring(text));
        return;
    }
    isNumber_ = true;
    for (const wchar_t digit : text.substr(1)) {
        if (digit < L'0' || digit > L'9' || number_ > 0xFFFF) {
            number_ = 0x10000;   // the number of nothing
            return;
        }
        number_ = number_ * 10 + static_cast<DWORD>(digit - L'0');
    }
}

std::optional<PeFile> PeFile::Parse(std::span<const BYTE> bytes) {
    constexpr WORD dosMagic = 0x5A4D, magic32 = 0x10B, magic64 = 0x20B;
    constexpr DWORD peMagic = 0x4550;
    constexpr std::uint64_t dosHeaderBytes = 64, fileHeaderBytes = 24;
    if (!Holds(bytes, 0, dosHeaderBytes) || At<WORD>(bytes, 0) != dosMagic) {
        return std::nullopt;
    }
    const std::uint64_t header = At<DWORD>(bytes, 60);
    if (!Holds(bytes, header, fileHeaderBytes) || At<DWORD>(bytes, header) != peMagic) {
        return std::nullopt;
    }
    const WORD sectionCount = At<WORD>(bytes, header + 6), optionalBytes = At<WORD>(bytes, header + 20);
    const std::uint64_t optional = header + fileHeaderBytes;
    if (optionalBytes < 2 || !Holds(bytes, optional, optionalBytes)) {
        return std::nullopt;
    }
    const WORD magic = At<WORD>(bytes, optional);
    if (magic != magic32 && magic != magic64) {
        return std::nullopt;
    }

    PeFile file(bytes);
    for (WORD i = 0; i < sectionCount; ++i) {
        const std::uint64_t section = optional + optionalBytes + i * sectionBytes;
        if (!Holds(bytes, section, sectionBytes)) {
            return std::nullopt;
        }
        file.sections_.push_back({At<DWORD>(bytes, section + 12), At<DWORD>(bytes, section + 8),
                                  At<DWORD>(bytes, section + 20), At<DWORD>(bytes, section + 16)});
    }
    const std::uint64_t directories = magic == magic32 ? 96 : 112;   // from the optional header on, 8 bytes each
    constexpr std::uint64_t resources = 2;
    const std::uint64_t wanted = directories + resources * 8;
    if (optionalBytes >= wanted + 8 && At<DWORD>(bytes, optional + directories - 4) > resources) {
        const DWORD address = At<DWORD>(bytes, optional + wanted);
        if (address != 0) {
            file.tree_ = file.FromAddress(address);
        }
    }
    return file;
}

std::span<const BYTE> PeFile::FromAddress(std::uint64_t address) const {
    for (const Section& section : sections_) {
        // A size of 0 in memory stands for the size in the file.
        const std::uint64_t size = section.addressBytes ? section.addressBytes : section.storedBytes;
        const std::uint64_t into = address - section.address;
        if (address < section.address || into >= std::min(size, section.storedBytes) ||
            !Holds(bytes_, section.offset, into)) {
            continue;
        }
        const std::uint64_t start = section.offset + into;
        return bytes_.subspan(start, std::min<std::uint64_t>(section.storedBytes - into, bytes_.size() - start));
    }
    return {};
}

std::span<const BYTE> PeFile::Entries(DWORD directory) const {
    if (!Holds(tree_, directory, directoryHeaderBytes)) {
        return {};
    }
    const std::size_t count =
        std::size_t{At<WORD>(tree_, directory + std::uint64_t{12})} + At<WORD>(tree_, directory + std::uint64_t{14});
    const std::span<const BYTE> rest = tree_.subspan(directory + directoryHeaderBytes);
    return rest.first(std::min(count, rest.size() / entryBytes) * entryBytes);
}

std::optional<std::wstring> PeFile::Text(DWORD offset) const {
    if (!Holds(tree_, offset, 2)) {
        return std::nullopt;
    }
    const WORD units = At<WORD>(tree_, offset);
    const std::uint64_t start = std::uint64_t{offset} + 2;
    if (units > mostNameUnits || !Holds(tree_, start, std::uint64_t{units} * 2)) {
        return std::nullopt;
    }
    std::wstring text;
    text.reserve(units);
    for (WORD i = 0; i < units; ++i) {
        char32_t code = At<WORD>(tree_, start + i * std::uint64_t{2});
        if (code >= 0xD800 && code < 0xDC00 && i + 1 < units) {
            const char32_t next = At<WORD>(tree_, start + i * std::uint64_t{2} + 2);
            if (next >= 0xDC00 && next < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
                ++i;
            }
        }
        AppendWide(text, code);
    }
    return text;
}

bool PeFile::IsNamed(const Entry& entry, const ResourceKey& key) const {
    const bool isNumber = !(entry.name & isDirectory);
    if (isNumber || key.IsNumber()) {
        return isNumber && key.IsNumber() && entry.name == key.Number();
    }
    const std::optional<std::wstring> text = Text(entry.name & offsetBits);
    return text && Folded(*text) == key.Text();
}

std::optional<DWORD> PeFile::Child(DWORD directory, const ResourceKey& key) const {
    const std::span<const BYTE> entries = Entries(directory);
    for (std::size_t at = 0; at < entries.size(); at += entryBytes) {
        const auto entry = At<Entry>(entries, at);
        if (IsNamed(entry, key)) {
            return entry.target;
        }
    }
    return std::nullopt;
}

std::optional<DWORD> PeFile::NamesOf(const ResourceKey& type) const {
    const std::optional<DWORD> names = Child(0, type);
    return names && (*names & isDirectory) ? std::optional(*names & offsetBits) : std::nullopt;
}

std::optional<std::size_t> PeFile::Find(const ResourceKey& type, const ResourceKey& name) const {
    const std::optional<DWORD> names = NamesOf(type);
    const std::optional<DWORD> languages = names ? Child(*names, name) : std::nullopt;
    if (!languages || !(*languages & isDirectory)) {
        return std::nullopt;
    }
    const std::span<const BYTE> entries = Entries(*languages & offsetBits);
    std::optional<DWORD> found;
    for (std::size_t at = 0; at < entries.size(); at += entryBytes) {
        const auto entry = At<Entry>(entries, at);
        if (!found || entry.name == 0) {
            found = entry.target;
        }
    }
    if (!found || (*found & isDirectory) || !Holds(tree_, *found, dataEntryBytes)) {
        return std::nullopt;
    }
    const auto entry = static_cast<std::size_t>(tree_.data() - bytes_.data()) + *found;
    return Data(entry) ? std::optional(entry) : std::nullopt;
}

std::optional<std::span<const BYTE>> PeFile::Data(std::size_t entry) const {
    if (!Holds(bytes_, entry, dataEntryBytes)) {
        return std::nullopt;
    }
    const DWORD size = At<DWORD>(bytes_, entry + 4);
    if (size == 0) {
        return bytes_.subspan(entry, 0);
    }
    const std::span<const BYTE> data = FromAddress(At<DWORD>(bytes_, entry));
    return data.empty() || size > data.size() ? std::nullopt : std::optional(data.first(size));
}

std::vector<PeFile::Name> PeFile::Names(const ResourceKey& type) const {
    std::vector<Name> names;
    const std::span<const BYTE> entries = Entries(NamesOf(type).value_or(offsetBits));
    names.reserve(entries.size() / entryBytes);
    for (std::size_t at = 0; at < entries.size(); at += entryBytes) {
        const auto entry = At<Entry>(entries, at);
        names.push_back({!(entry.name & isDirectory), entry.name & offsetBits});
    }
    return names;
}

}   // namespace rastel::platform
