// Icon images out of files and modules: which one is taken, what is refused, and files that lie.
#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "rastel/image/dib_section.h"
#include "rastel/image/icon_directory.h"
#include "rastel/platform/gdi.h"
#include "rastel/platform/kernel.h"
#include "tests/image/pe_bytes.h"
#include "tests/image/temporary_file.h"

using rastel::image::IconDirectory;
using rastel::test::ByteVector;
using rastel::test::IconFileBytes;
using rastel::test::IconModule;
using rastel::test::IconPicture;
using rastel::test::Patch;
using rastel::test::PeWidth;
using rastel::test::TemporaryFile;
using winext::CDibSection;

namespace {

constexpr std::size_t firstEntry = 6, firstImage = firstEntry + 16;   // of a file with one image

int LoadFile(CDibSection& image, const ByteVector& bytes, int width = 16, int height = 16, int bits = 32) {
    const TemporaryFile file(bytes);
    return image.LoadIconImage(nullptr, file.Name().c_str(), width, height, bits);
}

void ExpectPixels(CDibSection& image, const IconPicture& picture) {
    ASSERT_EQ(image.GetWidth(), picture.width);
    ASSERT_EQ(image.GetHeight(), picture.height);
    ASSERT_EQ(image.GetBitsPrPixel(), 32);
    EXPECT_EQ(image.IsTopDown(), 0);
    for (int i = 0; i < picture.width * picture.height * 4; ++i) {
        ASSERT_EQ(image.GetBits()[i], static_cast<BYTE>(picture.seed + i)) << i;
    }
}

class Module {
public:
    explicit Module(const ByteVector& bytes)
        : file_(bytes, ".dll"), handle_(::LoadLibraryExW(file_.Name().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
    ~Module() {
        if (handle_) {
            ::FreeLibrary(handle_);
        }
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    HMODULE Handle() const { return handle_; }

private:
    TemporaryFile file_;
    HMODULE handle_;
};

TEST(IconImage, TheFirstImageOfTheSizeAndOf32BitsIsTaken) {
    const std::vector<IconPicture> pictures = {{32, 32, 8, 1},  {16, 16, 32, 2}, {32, 32, 32, 3},
                                               {32, 32, 32, 4}, {16, 48, 32, 5}, {256, 256, 32, 6}};
    const TemporaryFile file(IconFileBytes(pictures));
    CDibSection image;
    for (const std::size_t i : {1, 2, 4, 5}) {
        const auto [width, height, bits, seed] = pictures[i];
        ASSERT_EQ(image.LoadIconImage(nullptr, file.Name().c_str(), width, height, 32), 1);
        ExpectPixels(image, pictures[i]);
    }
    for (const auto& [width, height] : {std::pair{48, 16}, {0, 0}, {-16, -16}, {64, 64}, {INT_MAX, INT_MIN}}) {
        EXPECT_EQ(image.LoadIconImage(nullptr, file.Name().c_str(), width, height, 32), 0);
    }
    for (const int bits : {24, 8, 0, -1}) {
        EXPECT_EQ(image.LoadIconImage(nullptr, file.Name().c_str(), 16, 16, bits), 0);
    }
    ExpectPixels(image, pictures.back());   // what failed left it alone
}

TEST(IconImage, ALoadedIconIsABitmapLikeAnyOther) {
    CDibSection image;
    ASSERT_EQ(LoadFile(image, IconFileBytes({{16, 16, 32, 9}})), 1);
    DIBSECTION section = {};
    ASSERT_EQ(::GetObjectW(image.m_hBitmap, sizeof(section), &section), static_cast<int>(sizeof(section)));
    EXPECT_EQ(section.dsBm.bmBits, image.GetBits());
}

TEST(IconImage, FilesThatLieAreRefused) {
    CDibSection image;
    ASSERT_EQ(LoadFile(image, IconFileBytes({{8, 8, 32, 1}}), 8, 8), 1);
    const ByteVector good = IconFileBytes({{16, 16, 32, 2}});
    const auto refused = [&](auto change) {
        ByteVector bytes = good;
        change(bytes);
        return LoadFile(image, bytes) == 0 && image.GetWidth() == 8;
    };
    const auto end = static_cast<DWORD>(good.size());
    for (const DWORD offset : std::initializer_list<DWORD>{0, 30, end, 0x7FFFFFFF, 0xFFFFFFFF}) {
        EXPECT_TRUE(refused([&](ByteVector& bytes) { Patch(bytes, firstEntry + 12, offset); })) << offset;
    }
    for (const DWORD size : {0u, 12u, 39u, 200u, 0x7FFFFFFFu, 0xFFFFFFD8u, 0xFFFFFFFFu}) {
        EXPECT_TRUE(refused([&](ByteVector& bytes) { Patch(bytes, firstImage, size); })) << size;
    }
    EXPECT_TRUE(refused([](ByteVector& bytes) { Patch(bytes, firstImage + 14, WORD{24}); }));
    EXPECT_TRUE(refused([](ByteVector& bytes) { Patch(bytes, 4, WORD{0}); }));
    EXPECT_TRUE(refused([](ByteVector& bytes) { bytes.resize(firstEntry + 15); }));
    EXPECT_TRUE(refused([](ByteVector& bytes) { bytes.resize(firstImage + 40 + 16 * 16 * 4 - 1); }));
    EXPECT_TRUE(refused([](ByteVector& bytes) { bytes.clear(); }));
    EXPECT_TRUE(refused([](ByteVector& bytes) {   // compressed
        const BYTE png[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0, 13, 'I', 'H', 'D', 'R'};
        std::copy(std::begin(png), std::end(png), bytes.begin() + firstImage);
    }));

    ByteVector longCount = good;   // more entries than there are, the wanted one among them
    Patch(longCount, 4, WORD{0xFFFF});
    EXPECT_EQ(LoadFile(image, longCount), 1);
    ByteVector withoutMask = good;
    withoutMask.resize(firstImage + 40 + 16 * 16 * 4);
    EXPECT_EQ(LoadFile(image, withoutMask), 1);
}

TEST(IconImage, WhatIsNoFileIsRefused) {
    CDibSection image;
    const std::wstring folder = std::filesystem::temp_directory_path().wstring();
    for (const wchar_t* const name : {L"", L"no such file.ico", folder.c_str()}) {
        EXPECT_EQ(image.LoadIconImage(nullptr, name, 16, 16, 32), 0);
    }
    EXPECT_EQ(image.LoadIconImage(nullptr, nullptr, 16, 16, 32), 0);
    EXPECT_EQ(image.LoadIconImage(nullptr, MAKEINTRESOURCEW(7), 16, 16, 32), 0);
}

TEST(IconImage, ModulesOfBothWidthsGiveTheirIcons) {
    const std::vector<IconPicture> pictures = {{32, 32, 8, 1}, {32, 32, 32, 2}, {256, 256, 32, 3}};
    for (const PeWidth width : {PeWidth::Bits32, PeWidth::Bits64}) {
        const Module named(IconModule(width, u"MAINICON", pictures)), numbered(IconModule(width, WORD{101}, pictures));
        ASSERT_NE(named.Handle(), nullptr);
        ASSERT_NE(numbered.Handle(), nullptr);
        CDibSection image;
        for (const wchar_t* const name : {L"MAINICON", L"MainIcon"}) {
            image.Destroy();
            ASSERT_EQ(image.LoadIconImage(named.Handle(), name, 32, 32, 32), 1);
            ExpectPixels(image, pictures[1]);
        }
        for (const wchar_t* const name : {static_cast<const wchar_t*>(MAKEINTRESOURCEW(101)), L"#101"}) {
            image.Destroy();
            ASSERT_EQ(image.LoadIconImage(numbered.Handle(), name, 256, 256, 32), 1);
            ExpectPixels(image, pictures[2]);
        }
        EXPECT_EQ(image.LoadIconImage(numbered.Handle(), MAKEINTRESOURCEW(102), 32, 32, 32), 0);
        EXPECT_EQ(image.LoadIconImage(numbered.Handle(), L"MAINICON", 32, 32, 32), 0);
        EXPECT_EQ(image.LoadIconImage(named.Handle(), L"MAINICON", 48, 48, 32), 0);
        EXPECT_EQ(image.LoadIconImage(named.Handle(), L"MAINICON", 32, 32, 8), 0);
        EXPECT_EQ(image.LoadIconImage(named.Handle(), nullptr, 32, 32, 32), 0);
        EXPECT_EQ(image.LoadIconImage(::GetModuleHandleW(nullptr), L"MAINICON", 32, 32, 32), 0);
        ExpectPixels(image, pictures[2]);
    }
}

TEST(IconImage, AGroupMayNameImagesThatAreNotThere) {
    const IconPicture picture = {16, 16, 32, 1};
    ByteVector shortImage = rastel::test::ImageBytes(picture);
    shortImage.resize(40 + 16 * 16 * 4 - 1);
    for (const ByteVector& image : {ByteVector{}, ByteVector(39), shortImage}) {
        const Module module(rastel::test::PeBytes(
            PeWidth::Bits64,
            {{WORD{14}, WORD{1}, rastel::test::IconGroupBytes({picture}, 5)}, {WORD{3}, WORD{5}, image}}));
        ASSERT_NE(module.Handle(), nullptr);
        CDibSection section;
        EXPECT_EQ(section.LoadIconImage(module.Handle(), MAKEINTRESOURCEW(1), 16, 16, 32), 0);
        EXPECT_EQ(section.GetBits(), nullptr);
    }
}

TEST(IconDirectory, DamagedBytesDoNoHarm) {
    const ByteVector whole = IconFileBytes({{16, 16, 32, 1}, {8, 8, 8, 2}, {32, 32, 32, 3}});
    std::mt19937 random(11);
    int found = 0;
    for (int round = 0; round < 4000; ++round) {
        ByteVector bytes = whole;
        for (auto flips = random() % 6; flips > 0; --flips) {
            bytes[random() % 160] ^= static_cast<BYTE>(1u << random() % 8);
        }
        if (random() % 2) {
            bytes.resize(random() % bytes.size());
        }
        bytes.shrink_to_fit();
        for (const auto kind : {IconDirectory::Kind::File, IconDirectory::Kind::Group}) {
            const IconDirectory directory(kind, bytes);
            for (int i = -1; i <= directory.Count(); ++i) {
                const auto entry = directory.Entry(i);
                if (entry.location <= bytes.size()) {
                    const auto image = std::span<const BYTE>(bytes).subspan(entry.location);
                    const auto pixels = rastel::image::IconPixels(image, entry.width, entry.height);
                    found += pixels && ByteVector(pixels->begin(), pixels->end()).size() > 0;
                }
            }
        }
    }
    EXPECT_GT(found, 1000);   // the damage leaves something to find
}

}   // namespace
