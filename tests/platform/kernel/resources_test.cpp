// Resources of PE files that are loaded as data: found, listed, and never read from outside the file.
#include <gtest/gtest.h>

#include <random>

#include "rastel/platform/kernel.h"
#include "rastel/platform/portable/kernel/pe_file.h"
#include "tests/image/pe_bytes.h"
#include "tests/image/temporary_file.h"

using rastel::platform::PeFile;
using rastel::platform::ResourceKey;
using rastel::test::ByteVector;
using rastel::test::Patch;
using rastel::test::PeBytes;
using rastel::test::PeWidth;
using rastel::test::Resource;
using rastel::test::sectionOffset;
using rastel::test::TemporaryFile;

namespace {

const std::vector<Resource> sample = {
    {WORD{10}, u"ALPHA", {1, 2, 3}},       {WORD{10}, u"Pi\xD83D\xDE00", {4}}, {WORD{10}, WORD{7}, {5, 6}, 0x407},
    {WORD{10}, WORD{7}, {7, 8, 9, 10}, 0}, {u"TEXTS", WORD{1}, {11}},          {WORD{10}, WORD{8}, {}},
};

HMODULE Load(const TemporaryFile& file) {
    return ::LoadLibraryExW(file.Name().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

ByteVector DataOf(HMODULE module, LPCWSTR name, LPCWSTR type) {
    const HRSRC found = ::FindResourceW(module, name, type);
    if (!found) {
        return {};
    }
    const auto* const bytes = static_cast<const BYTE*>(::LockResource(::LoadResource(module, found)));
    return bytes ? ByteVector(bytes, bytes + ::SizeofResource(module, found)) : ByteVector{};
}

BOOL Note(HMODULE module, LPCWSTR, LPWSTR name, LONG_PTR parameter) {
    auto& notes = *reinterpret_cast<std::wstring*>(parameter);
    notes += (IS_INTRESOURCE(name) ? std::to_wstring(reinterpret_cast<ULONG_PTR>(name)) : std::wstring(name)) + L' ';
    ::FreeLibrary(module);   // the names are still there afterwards
    return notes.find(L"STOP") == std::wstring::npos;
}

TEST(Resources, AreFoundByNameNumberAndLanguage) {
    for (const PeWidth width : {PeWidth::Bits32, PeWidth::Bits64}) {
        const TemporaryFile file(PeBytes(width, sample), ".dll");
        const HMODULE module = Load(file);
        ASSERT_NE(module, nullptr);
        const LPCWSTR data = MAKEINTRESOURCEW(10);
        for (const wchar_t* const name : {L"ALPHA", L"alpha"}) {
            EXPECT_EQ(DataOf(module, name, data), (ByteVector{1, 2, 3}));
        }
        EXPECT_EQ(DataOf(module, L"PI\U0001F600", L"#10"), ByteVector{4});
        EXPECT_EQ(DataOf(module, MAKEINTRESOURCEW(7), data), (ByteVector{7, 8, 9, 10}));   // the neutral language
        EXPECT_EQ(DataOf(module, L"#0007", data), (ByteVector{7, 8, 9, 10}));
        EXPECT_EQ(DataOf(module, L"#1", L"texts"), ByteVector{11});
        const HRSRC empty = ::FindResourceW(module, MAKEINTRESOURCEW(8), data);
        EXPECT_NE(empty, nullptr);
        EXPECT_EQ(::SizeofResource(module, empty), 0u);
        for (const wchar_t* const none : {L"", L"#", L"#7x", L"#65543", L"#4294967303", L"ALPH", L"ALPHAS"}) {
            EXPECT_EQ(::FindResourceW(module, none, data), nullptr) << testing::PrintToString(none);
        }
        EXPECT_EQ(::FindResourceW(module, nullptr, data), nullptr);
        EXPECT_EQ(::FindResourceW(module, L"ALPHA", nullptr), nullptr);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_RESOURCE_NAME_NOT_FOUND});
        EXPECT_TRUE(::FreeLibrary(module));
    }
}

TEST(Resources, AreListedUntilTheCallerHasEnough) {
    const TemporaryFile file(PeBytes(PeWidth::Bits32, sample), ".dll");
    const TemporaryFile stopping(
        PeBytes(PeWidth::Bits32, {{WORD{10}, u"A", {1}}, {WORD{10}, u"STOP", {1}}, {WORD{10}, WORD{3}, {1}}}), ".dll");
    std::wstring notes;
    const auto parameter = reinterpret_cast<LONG_PTR>(&notes);
    EXPECT_TRUE(::EnumResourceNamesW(Load(file), MAKEINTRESOURCEW(10), Note, parameter));
    EXPECT_EQ(notes, L"ALPHA Pi\U0001F600 7 8 ");
    notes.clear();
    EXPECT_FALSE(::EnumResourceNamesW(Load(stopping), MAKEINTRESOURCEW(10), Note, parameter));
    EXPECT_EQ(notes, L"A STOP ");
    const HMODULE module = Load(file);
    EXPECT_FALSE(::EnumResourceNamesW(module, MAKEINTRESOURCEW(99), Note, parameter));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND});
    EXPECT_FALSE(::EnumResourceNamesW(module, MAKEINTRESOURCEW(10), nullptr, 0));
    EXPECT_TRUE(::FreeLibrary(module));
}

TEST(Resources, StaleAndForeignHandlesGiveNothing) {
    const TemporaryFile file(PeBytes(PeWidth::Bits64, sample), ".dll");
    const HMODULE module = Load(file), other = Load(file);
    ASSERT_NE(module, nullptr);
    EXPECT_NE(module, other);
    const HRSRC found = ::FindResourceW(module, L"ALPHA", MAKEINTRESOURCEW(10));
    ASSERT_NE(found, nullptr);
    const HGLOBAL loaded = ::LoadResource(module, found);
    EXPECT_EQ(::LoadResource(other, found), nullptr);
    for (const LONG_PTR wild : {LONG_PTR{0}, LONG_PTR{16}, LONG_PTR{-8}}) {
        EXPECT_EQ(::LoadResource(module, reinterpret_cast<HRSRC>(wild)), nullptr);
        EXPECT_EQ(::SizeofResource(module, reinterpret_cast<HRSRC>(wild)), 0u);
        EXPECT_EQ(::LockResource(reinterpret_cast<HGLOBAL>(wild)), nullptr);
    }
    EXPECT_EQ(::GetProcAddress(module, "main"), nullptr);   // data, not code
    EXPECT_TRUE(::FreeLibrary(module));
    EXPECT_FALSE(::FreeLibrary(module));
    EXPECT_EQ(::FindResourceW(module, L"ALPHA", MAKEINTRESOURCEW(10)), nullptr);
    EXPECT_EQ(::SizeofResource(module, found), 0u);
    EXPECT_TRUE(::FreeLibrary(other));
    EXPECT_EQ(::LockResource(loaded), nullptr);
    EXPECT_EQ(::FindResourceW(nullptr, L"ALPHA", MAKEINTRESOURCEW(10)), nullptr);
    EXPECT_EQ(::FindResourceW(::GetModuleHandleW(nullptr), L"ALPHA", MAKEINTRESOURCEW(10)), nullptr);
}

TEST(Resources, OnlyPeFilesAreLoadedAsData) {
    const ByteVector good = PeBytes(PeWidth::Bits64, sample);
    const TemporaryFile file(good, ".dll");
    const auto loads = [&](const ByteVector& bytes) {
        file.Write(bytes);
        const HMODULE module = Load(file);
        return module && ::FreeLibrary(module);
    };
    EXPECT_TRUE(loads(good));
    EXPECT_FALSE(loads({}));
    EXPECT_FALSE(loads({'M', 'Z'}));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
    EXPECT_FALSE(loads(ByteVector(good.begin(), good.begin() + 0x80)));
    for (const std::size_t at : {std::size_t{0}, std::size_t{0x40}, std::size_t{0x58}}) {   // the three magic numbers
        ByteVector bytes = good;
        bytes[at] ^= 0x40;
        EXPECT_FALSE(loads(bytes)) << at;
    }
    for (const DWORD far : {0xFFFFFFFFu, 0x7FFFFFFFu, static_cast<DWORD>(good.size() - 3)}) {
        ByteVector bytes = good;
        Patch(bytes, 0x3C, far);
        EXPECT_FALSE(loads(bytes)) << far;
    }
    file.Write(good);
    EXPECT_EQ(::LoadLibraryExW(file.Name().c_str(), nullptr, 0), nullptr);   // as code: never
    EXPECT_EQ(::LoadLibraryExW(nullptr, nullptr, LOAD_LIBRARY_AS_DATAFILE), nullptr);
    EXPECT_EQ(::LoadLibraryExW(L"/tmp", nullptr, LOAD_LIBRARY_AS_DATAFILE), nullptr);
    const std::wstring bare = file.Name().substr(0, file.Name().size() - 4);
    const HMODULE module = ::LoadLibraryExW(bare.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    EXPECT_NE(module, nullptr);   // ".dll" is added
    EXPECT_TRUE(::FreeLibrary(module));
}

TEST(Resources, LoopsInTheTreeEnd) {
    ByteVector bytes = PeBytes(PeWidth::Bits32, {{WORD{10}, WORD{1}, {1}}});
    for (const std::size_t entry : {16u, 40u, 64u}) {   // the three levels, each led back to the root
        ByteVector looped = bytes;
        Patch(looped, sectionOffset + entry + 4, DWORD{0x80000000});
        const auto file = PeFile::Parse(looped);
        ASSERT_TRUE(file);
        EXPECT_FALSE(file->Find(ResourceKey(MAKEINTRESOURCEW(10)), ResourceKey(MAKEINTRESOURCEW(1))));
    }
    Patch(bytes, sectionOffset + 14, WORD{0xFFFF});   // more entries than the section holds
    const auto file = PeFile::Parse(bytes);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->Find(ResourceKey(MAKEINTRESOURCEW(10)), ResourceKey(MAKEINTRESOURCEW(1))));
}

// Follows whatever a damaged file leads to, and reads every byte of it.
std::size_t Walk(const ByteVector& bytes) {
    const auto file = PeFile::Parse(bytes);
    std::size_t sum = 0;
    if (!file) {
        return sum;
    }
    const ResourceKey type(MAKEINTRESOURCEW(10));
    for (const PeFile::Name& name : file->Names(type)) {
        const auto text = name.isNumber ? std::nullopt : file->Text(name.value);
        const bool isKey = name.isNumber ? name.value <= 0xFFFF : text.has_value();
        const auto entry =
            isKey ? file->Find(type, ResourceKey(text ? text->c_str() : MAKEINTRESOURCEW(name.value))) : std::nullopt;
        const auto data = entry ? file->Data(*entry) : std::nullopt;
        for (const BYTE byte : data.value_or(std::span<const BYTE>())) {
            sum += byte;
        }
    }
    return sum;
}

TEST(Resources, DamagedFilesDoNoHarm) {
    std::mt19937 random(5);
    int found = 0;
    for (const PeWidth width : {PeWidth::Bits32, PeWidth::Bits64}) {
        const ByteVector whole = PeBytes(width, sample);
        for (int round = 0; round < 4000; ++round) {
            ByteVector bytes = whole;
            for (auto flips = random() % 5; flips > 0; --flips) {
                // Headers and tree; the padding between them says nothing.
                const std::size_t at = random() % 2 ? random() % 0x180 : sectionOffset + random() % 0x160;
                bytes[at] ^= static_cast<BYTE>(1u << random() % 8);
            }
            if (random() % 4 == 0) {
                bytes.resize(random() % bytes.size());
            }
            bytes.shrink_to_fit();   // so that a byte too far is seen
            found += Walk(bytes) > 0;
        }
    }
    EXPECT_GT(found, 1000);   // the damage leaves something to find
}

}   // namespace
