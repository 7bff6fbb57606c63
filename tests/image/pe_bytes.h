// Windows programs of one section that holds nothing but resources, built by tests.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "tests/image/icon_bytes.h"

namespace rastel::test {

// A number or a text; texts come first in a directory, as the format wants it.
using ResourceName = std::variant<std::u16string, WORD>;

struct Resource {
    ResourceName type, name;
    ByteVector data;
    WORD language = 0x409;
};

enum class PeWidth { Bits32, Bits64 };

inline constexpr DWORD sectionAddress = 0x1000, sectionOffset = 0x200;

class ResourceSection {
public:
    explicit ResourceSection(const std::vector<Resource>& resources) {
        std::map<ResourceName, std::map<ResourceName, std::vector<const Resource*>>> tree;
        for (const Resource& resource : resources) {
            tree[resource.type][resource.name].push_back(&resource);
        }
        const std::size_t root = Directory(tree.size(), TextCount(tree));
        std::size_t typeEntry = root + 16;
        for (const auto& [type, names] : tree) {
            const std::size_t nameDirectory = Directory(names.size(), TextCount(names));
            Entry(typeEntry, Stored(type), static_cast<DWORD>(nameDirectory) | 0x80000000);
            typeEntry += 8;
            std::size_t nameEntry = nameDirectory + 16;
            for (const auto& [name, languages] : names) {
                const std::size_t languageDirectory = Directory(languages.size(), 0);
                Entry(nameEntry, Stored(name), static_cast<DWORD>(languageDirectory) | 0x80000000);
                nameEntry += 8;
                std::size_t languageEntry = languageDirectory + 16;
                for (const Resource* const resource : languages) {
                    Entry(languageEntry, resource->language, Data(resource->data));
                    languageEntry += 8;
                }
            }
        }
    }

    const ByteVector& Bytes() const { return bytes_; }

private:
    template <typename Map>
    static std::size_t TextCount(const Map& map) {
        std::size_t count = 0;
        for (const auto& item : map) {
            count += item.first.index() == 0;
        }
        return count;
    }

    std::size_t Directory(std::size_t count, std::size_t textCount) {
        const std::size_t at = bytes_.size();
        bytes_.resize(at + 16 + count * 8);
        Patch(bytes_, at + 12, static_cast<WORD>(textCount));
        Patch(bytes_, at + 14, static_cast<WORD>(count - textCount));
        return at;
    }

    void Entry(std::size_t at, DWORD name, DWORD target) {
        Patch(bytes_, at, name);
        Patch(bytes_, at + 4, target);
    }

    void Align() { bytes_.resize((bytes_.size() + 7) / 8 * 8); }

    DWORD Stored(const ResourceName& name) {
        if (const WORD* const number = std::get_if<WORD>(&name)) {
            return *number;
        }
        const auto& text = std::get<std::u16string>(name);
        const auto at = static_cast<DWORD>(bytes_.size());
        Append(bytes_, static_cast<WORD>(text.size()));
        for (const char16_t unit : text) {
            Append(bytes_, unit);
        }
        Align();
        return at | 0x80000000;
    }

    DWORD Data(const ByteVector& data) {
        const auto entry = static_cast<DWORD>(bytes_.size());
        Append(bytes_, sectionAddress + entry + 16);
        Append(bytes_, static_cast<DWORD>(data.size()));
        Append(bytes_, DWORD{0});
        Append(bytes_, DWORD{0});
        Append(bytes_, data);
        Align();
        return entry;
    }

    ByteVector bytes_;
};

inline ByteVector PeBytes(PeWidth width, const std::vector<Resource>& resources) {
    const ByteVector section = ResourceSection(resources).Bytes();
    const std::size_t stored = (section.size() + 0x1FF) / 0x200 * 0x200;
    const bool is64 = width == PeWidth::Bits64;
    constexpr std::size_t header = 0x40, optional = header + 24;
    const std::size_t directories = optional + (is64 ? 112u : 96u), sections = directories + 16 * 8;
    ByteVector bytes(sectionOffset + stored);
    Patch(bytes, 0, WORD{0x5A4D});
    Patch(bytes, 0x3C, static_cast<DWORD>(header));
    Patch(bytes, header, DWORD{0x4550});
    Patch(bytes, header + 4, static_cast<WORD>(is64 ? 0x8664 : 0x14C));
    Patch(bytes, header + 6, WORD{1});
    Patch(bytes, header + 20, static_cast<WORD>(sections - optional));
    Patch(bytes, header + 22, static_cast<WORD>(is64 ? 0x2022 : 0x2102));   // a library, which runs
    Patch(bytes, optional, static_cast<WORD>(is64 ? 0x20B : 0x10B));
    if (is64) {
        Patch(bytes, optional + 24, 0x180000000ull);
    } else {
        Patch(bytes, optional + 28, DWORD{0x10000000});
    }
    Patch(bytes, optional + 32, DWORD{0x1000});   // in memory and in the file, sections lie on such borders
    Patch(bytes, optional + 36, DWORD{0x200});
    Patch(bytes, optional + 40, WORD{4});
    Patch(bytes, optional + 48, WORD{4});
    Patch(bytes, optional + 56, static_cast<DWORD>(sectionAddress + (section.size() + 0xFFF) / 0x1000 * 0x1000));
    Patch(bytes, optional + 60, sectionOffset);
    Patch(bytes, optional + 68, WORD{2});
    Patch(bytes, directories - 4, DWORD{16});
    Patch(bytes, directories + 16, sectionAddress);
    Patch(bytes, directories + 20, static_cast<DWORD>(section.size()));
    const char name[] = ".rsrc";
    std::copy_n(name, sizeof(name), bytes.begin() + static_cast<std::ptrdiff_t>(sections));
    Patch(bytes, sections + 8, static_cast<DWORD>(section.size()));
    Patch(bytes, sections + 12, sectionAddress);
    Patch(bytes, sections + 16, static_cast<DWORD>(stored));
    Patch(bytes, sections + 20, sectionOffset);
    Patch(bytes, sections + 36, DWORD{0x40000040});
    std::copy(section.begin(), section.end(), bytes.begin() + sectionOffset);
    return bytes;
}

// A module with one icon group of that name.
inline ByteVector IconModule(PeWidth width, const ResourceName& group, const std::vector<IconPicture>& pictures) {
    std::vector<Resource> resources = {{WORD{14}, group, IconGroupBytes(pictures, 1)}};
    WORD number = 1;
    for (const IconPicture& picture : pictures) {
        resources.push_back({WORD{3}, number++, ImageBytes(picture)});
    }
    return PeBytes(width, resources);
}

}   // namespace rastel::test
