// A colour surface on memory of the test's own: any pitch, guard bytes behind each row, and refusals on request.
#pragma once

#include <cstddef>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "rastel/surface/surface.h"
#include "tests/support/pixels.h"

namespace rastel::test {

// Opens the protected operations, so that each candidate can be called by name.
class OpenSurface : public CSurface {
public:
    using CSurface::ClipRects;
    using CSurface::InternalCopyBlt;
    using CSurface::InternalCopyBltGDI;
    using CSurface::InternalCopyBltMMX;
    using CSurface::InternalFillColor;
    using CSurface::InternalFillColorCPU;
    using CSurface::InternalFillColorGDI;
    using CSurface::InternalFillColorMMX;
    using CSurface::InternalTransparentBlt;
    using CSurface::UseBestProfile;

    int InternalCopyBltBase(int x, int y, CSurfaceBase& src, const CRect& rcSrc) {
        return CSurfaceBase::InternalCopyBlt(x, y, src, rcSrc);
    }
};

class TestStore : public OpenSurface {
public:
    TestStore(int width, int height, int extraPitch = 0, std::vector<std::string>* log = nullptr)
        : log_(log), bytes_(static_cast<std::size_t>((width * 4 + extraPitch) * height), guardByte) {
        m_Width = width;
        m_Height = height;
        m_Pitch = width * 4 + extraPitch;
        for (int y = 0; y < height; ++y) {
            std::memset(Row(y), 0, static_cast<std::size_t>(width) * 4);
        }
    }

    HDC GetDC() override {
        Note("GetDC");
        return nullptr;
    }
    void ReleaseDC(HDC) override { Note("ReleaseDC"); }
    unsigned char* LockData() override {
        Note("LockData");
        if (refuseLock || isLocked) {
            return nullptr;
        }
        isLocked = true;
        return bytes_.data();
    }
    void UnlockData() override {
        Note("UnlockData");
        isLocked = false;
    }
    int InitializeSurface(int, int) override { return 0; }

    DWORD Pixel(int x, int y) const {
        DWORD pixel;
        std::memcpy(&pixel, bytes_.data() + y * m_Pitch + x * 4, 4);
        return pixel;
    }
    void SetPixel(int x, int y, DWORD pixel) { std::memcpy(Row(y) + x * 4, &pixel, 4); }
    void FillWithNoise(unsigned seed) {
        std::mt19937 random(seed);
        for (int y = 0; y < m_Height; ++y) {
            for (int x = 0; x < m_Width; ++x) {
                SetPixel(x, y, static_cast<DWORD>(random()));
            }
        }
    }
    bool GuardsStand() const {
        for (int y = 0; y < m_Height; ++y) {
            for (int i = m_Width * 4; i < m_Pitch; ++i) {
                if (bytes_[static_cast<std::size_t>(y * m_Pitch + i)] != guardByte) {
                    return false;
                }
            }
        }
        return true;
    }

    bool refuseLock = false;
    bool isLocked = false;
    std::string name;

private:
    static constexpr unsigned char guardByte = 0xA5;

    unsigned char* Row(int y) { return bytes_.data() + y * m_Pitch; }
    void Note(const char* call) {
        if (log_) {
            log_->push_back(name + "." + call);
        }
    }

    std::vector<std::string>* log_;
    std::vector<unsigned char> bytes_;
};

inline std::vector<DWORD> Noise(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<DWORD> words(count);
    for (DWORD& word : words) {
        word = static_cast<DWORD>(random());
    }
    return words;
}

}   // namespace rastel::test
