// The resources of a PE file, the form of Windows programs and libraries, 32 and 64 bits wide.
//
// The bytes stay the caller's. Whatever they hold, nothing outside them is read, and nothing runs longer than the
// directories are large: the tree of resources is followed three levels deep and no further, so that loops end.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

// The name or the type of a resource: a text, which counts without regard to case, or a number.
class ResourceKey {
public:
    explicit ResourceKey(LPCWSTR name);   // as the resource functions take it

    bool IsNumber() const { return isNumber_; }
    DWORD Number() const { return number_; }
    const std::wstring& Text() const { return text_; }   // folded to one case

private:
    bool isNumber_ = false;
    DWORD number_ = 0;
    std::wstring text_;
};

class PeFile {
public:
    // Nothing where the headers aren't those of a PE file. One without resources is one all the same.
    static std::optional<PeFile> Parse(std::span<const BYTE> bytes);

    // The data entry of a resource, as its place in the file.
    std::optional<std::size_t> Find(const ResourceKey& type, const ResourceKey& name) const;

    // What a data entry at that place names; nothing where that is not in the file whole.
    std::optional<std::span<const BYTE>> Data(std::size_t entry) const;

    // All names of a type. A text stands for itself, a number where `text` is empty.
    struct Name {
        bool isNumber;
        DWORD value;   // the number, or where the text lies in the tree
    };
    std::vector<Name> Names(const ResourceKey& type) const;
    std::optional<std::wstring> Text(DWORD offset) const;

private:
    struct Section {
        std::uint64_t address, addressBytes, offset, storedBytes;
    };
    struct Entry {
        DWORD name, target;
    };

    explicit PeFile(std::span<const BYTE> bytes) : bytes_(bytes) {}

    // The bytes of the file that a loaded module has from `address` on, to the end of their section.
    std::span<const BYTE> FromAddress(std::uint64_t address) const;
    std::span<const BYTE> Entries(DWORD directory) const;   // of 8 bytes each
    bool IsNamed(const Entry& entry, const ResourceKey& key) const;
    std::optional<DWORD> Child(DWORD directory, const ResourceKey& key) const;
    std::optional<DWORD> NamesOf(const ResourceKey& type) const;   // the directory of a type's names

    std::span<const BYTE> bytes_;
    std::span<const BYTE> tree_;
    std::vector<Section> sections_;
};

}   // namespace rastel::platform
