#include "tests/storm/scene.h"

#include <climits>
#include <cstring>

namespace rastel::storm {

namespace {

constexpr DWORD keyPixel = 0x00332211;   // as it lies in memory; 0x00112233 as a COLORREF

std::uint64_t Mix(std::uint64_t sum, const std::vector<unsigned char>& bytes) {
    for (const unsigned char byte : bytes) {
        sum = (sum ^ byte) * 0x100000001B3ull;
    }
    return sum;
}

}   // namespace

Scene::Scene(unsigned seed, int call) : random_(seed * 0x9E3779B9u + static_cast<unsigned>(call)) {
    const auto side = [this] { return Pick(0, 9) == 0 ? Pick(60, 200) : Pick(1, 40); };
    const auto padding = [this] { return Pick(0, 1) ? 0 : Pick(1, 13); };
    // One draw a statement: the order in which a call evaluates its arguments is the compiler's to choose.
    const int targetWidth = side(), targetHeight = side();
    const int sourceWidth = side(), sourceHeight = side();
    target_ = std::make_unique<ColorStore>(targetWidth, targetHeight, padding());
    source_ = std::make_unique<ColorStore>(sourceWidth, sourceHeight, padding());
    second_ = std::make_unique<ColorStore>(sourceWidth, sourceHeight, padding());
    targetPlane_ = std::make_unique<PlaneStore>(targetWidth, targetHeight, padding());
    sourcePlane_ = std::make_unique<PlaneStore>(sourceWidth, sourceHeight, padding());
    for (auto* const store : {&target_, &source_, &second_}) {
        FillBytes((*store)->bytes, true);
        (*store)->original = (*store)->bytes;
    }
    for (auto* const plane : {&targetPlane_, &sourcePlane_}) {
        FillBytes((*plane)->bytes, false);
        (*plane)->original = (*plane)->bytes;
    }
}

int Scene::Pick(int low, int high) {
    // Spelled out, for the library's distributions differ between compilers and the checksums must not.
    const auto span = static_cast<std::uint64_t>(static_cast<long long>(high) - low + 1);
    return static_cast<int>(low + static_cast<long long>(random_() * span >> 32));
}

DWORD Scene::Color() {
    return Pick(0, 2) == 0 ? static_cast<DWORD>(random_()) : 0x00112233;
}

CRect* Scene::RectOrNull() {
    if (Pick(0, 2) == 0) {
        return nullptr;
    }
    // Mostly where the stores are, so that most calls have something to do.
    const auto edge = [this](int low, int high) {
        switch (Pick(0, 29)) {
            case 0:
                return Pick(INT_MIN, INT_MAX);
            case 1:
                return Pick(0, 1) ? INT_MIN : INT_MAX;
            case 2:
                return Pick(-20, 60);
            default:
                return Pick(low, high);
        }
    };
    const int left = edge(-6, 8), top = edge(-6, 8), right = edge(-2, 50), bottom = edge(-2, 50);
    CRect rect(left, top, right, bottom);
    if (Pick(0, 1) && left < INT_MAX - 100 && top < INT_MAX - 100) {
        const int width = Pick(0, 50), height = Pick(0, 50);
        rect = CRect(left, top, left + width, top + height);
    }
    rects_.push_back(std::make_unique<CRect>(rect));
    return rects_.back().get();
}

int Scene::Position() {
    const int kind = Pick(0, 29);
    return kind == 0 ? Pick(INT_MIN, INT_MAX) : kind < 4 ? Pick(-30, 50) : Pick(-8, 10);
}

void Scene::FillBytes(std::vector<unsigned char>& bytes, bool arePixels) {
    const int style = Pick(0, 4);   // noise, extremes, all clear, all solid, runs
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto word = random_();
        const auto noise = static_cast<unsigned char>(word >> 8);
        const auto extreme = static_cast<unsigned char>(word % 4 == 0 ? 0 : word % 4 == 1 ? 255 : noise);
        const auto run = static_cast<unsigned char>(i / 37 % 3 == 0 ? 0 : i / 37 % 3 == 1 ? 255 : noise);
        bytes[i] = style == 0 ? noise : style == 1 ? extreme : style == 2 ? 0 : style == 3 ? 255 : run;
    }
    if (arePixels && Pick(0, 1)) {
        for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
            if (Pick(0, 1)) {
                std::memcpy(&bytes[i], &keyPixel, Pick(0, 3) ? 4 : 3);   // sometimes with a dirty alpha byte
            }
        }
    }
}

std::uint64_t Scene::Checksum(int result) const {
    std::uint64_t sum = 0xCBF29CE484222325ull ^ static_cast<std::uint32_t>(result);
    for (const auto* const store : {&target_, &source_, &second_}) {
        sum = Mix(sum, (*store)->bytes) + ((*store)->isLocked ? 1u : 0u);
    }
    for (const auto* const plane : {&targetPlane_, &sourcePlane_}) {
        sum = Mix(sum, (*plane)->bytes) + ((*plane)->isLocked ? 1u : 0u);
    }
    return sum;
}

bool Scene::PaddingStands() const {
    return target_->PaddingStands() && source_->PaddingStands() && second_->PaddingStands() &&
           targetPlane_->PaddingStands() && sourcePlane_->PaddingStands();
}

std::string Scene::Describe() const {
    std::string text = "target " + std::to_string(target_->GetWidth()) + "x" + std::to_string(target_->GetHeight()) +
                       ", source " + std::to_string(source_->GetWidth()) + "x" + std::to_string(source_->GetHeight());
    for (const auto& rect : rects_) {
        text += ", (" + std::to_string(rect->left) + ", " + std::to_string(rect->top) + ", " +
                std::to_string(rect->right) + ", " + std::to_string(rect->bottom) + ")";
    }
    return text;
}

}   // namespace rastel::storm
