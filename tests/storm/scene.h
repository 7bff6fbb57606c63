// What one call of the storm works on: two colour surfaces, two planes and random arguments, all made from the seed and
// the call's number.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/surface/surface.h"

namespace rastel::storm {

// A store on memory of its own: any pitch, the bytes between rows never to be written. `Base` is a colour surface or a
// plane.
template <class Base>
class MemoryStore : public Base {
public:
    MemoryStore(int width, int height, int padding, int bytesPerPixel) : padding_(padding) {
        this->m_Width = width;
        this->m_Height = height;
        this->m_Pitch = width * bytesPerPixel + padding;
        bytes.resize(static_cast<std::size_t>(this->m_Pitch) * static_cast<std::size_t>(height));
    }

    HDC GetDC() override { return nullptr; }
    void ReleaseDC(HDC) override {}
    unsigned char* LockData() override {
        if (isLocked) {
            return nullptr;
        }
        isLocked = true;
        return bytes.data();
    }
    void UnlockData() override { isLocked = false; }
    void Destroy() override {}

    bool PaddingStands() const {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const bool isPadding =
                static_cast<int>(i % static_cast<std::size_t>(this->m_Pitch)) >= this->m_Pitch - padding_;
            if (isPadding && bytes[i] != original[i]) {
                return false;
            }
        }
        return true;
    }

    std::vector<unsigned char> bytes, original;   // now, and before the call
    bool isLocked = false;

private:
    int padding_;
};

class ColorStore : public MemoryStore<CSurface> {
public:
    ColorStore(int width, int height, int padding) : MemoryStore(width, height, padding, 4) {}
    int InitializeSurface(int, int) override { return 0; }
    using CSurface::UseBestProfile;
};

class PlaneStore : public MemoryStore<CAlphaChannel> {
public:
    PlaneStore(int width, int height, int padding) : MemoryStore(width, height, padding, 1) {}
    int Initialize(int, int) override { return 0; }
};

class Scene {
public:
    Scene(unsigned seed, int call);

    int Pick(int low, int high);   // both inclusive
    DWORD Color();                 // the key colour is likely
    CRect* RectOrNull();           // mostly near the stores, sometimes wild; lives as long as the scene
    int Position();

    // Over all bytes of all stores, row padding too, what was locked and not unlocked, and the call's result.
    std::uint64_t Checksum(int result) const;
    bool PaddingStands() const;   // nothing was written between rows
    std::string Describe() const;

    ColorStore& Target() { return *target_; }
    ColorStore& Source() { return *source_; }
    ColorStore& Second() { return *second_; }
    PlaneStore& TargetPlane() { return *targetPlane_; }
    PlaneStore& SourcePlane() { return *sourcePlane_; }   // of the source's size

private:
    void FillBytes(std::vector<unsigned char>& bytes, bool arePixels);

    std::mt19937 random_;
    std::unique_ptr<ColorStore> target_, source_, second_;
    std::unique_ptr<PlaneStore> targetPlane_, sourcePlane_;
    std::vector<std::unique_ptr<CRect>> rects_;
};

}   // namespace rastel::storm
