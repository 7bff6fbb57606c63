#include "tests/storm/operations.h"

#include <vector>

#include "rastel/image/dib.h"

namespace rastel::storm {

namespace {

// Arguments are drawn one by one: the order in which a call evaluates them is the compiler's to choose.
struct BlitArguments {
    explicit BlitArguments(Scene& scene)
        : x(scene.Position()), y(scene.Position()), source(scene.RectOrNull()), clip(scene.RectOrNull()) {}
    int x, y;
    CRect* source;
    CRect* clip;
};

template <auto operation>
int BetweenPlanes(Scene& scene) {
    const BlitArguments a(scene);
    return (scene.TargetPlane().*operation)(a.x, a.y, scene.SourcePlane(), a.source, a.clip);
}

template <auto operation>
int MaskFromColors(Scene& scene) {
    const BlitArguments a(scene);
    const DWORD color = CSurface::RGB2COLOR(scene.Color());
    return (scene.TargetPlane().*operation)(a.x, a.y, scene.Source(), color, a.source, a.clip);
}

int FillColor(Scene& scene) {
    CRect* const rect = scene.RectOrNull();
    CRect* const clip = scene.RectOrNull();
    return scene.Target().FillColor(rect, scene.Color(), clip);
}

int CopyBlt(Scene& scene) {
    const BlitArguments a(scene);
    return scene.Target().CopyBlt(a.x, a.y, scene.Source(), a.source, a.clip);
}

int CopyOntoItself(Scene& scene) {
    const BlitArguments a(scene);
    return scene.Target().CopyBlt(a.x, a.y, scene.Target(), a.source, a.clip);
}

int TransparentBlt(Scene& scene) {
    const BlitArguments a(scene);
    return scene.Target().TransparentBlt(a.x, a.y, scene.Source(), scene.Color(), a.source, a.clip);
}

int ShadowBlt(Scene& scene) {
    CRect* const rect = scene.RectOrNull();
    return scene.Target().ShadowBlt(rect, scene.Pick(-50, 150));
}

int StretchBlt(Scene& scene) {
    CRect* const target = scene.RectOrNull();
    CRect* const source = scene.RectOrNull();
    return scene.Target().StretchBlt(target, scene.Source(), source, scene.RectOrNull());
}

int Fill(Scene& scene) {
    CRect* const rect = scene.RectOrNull();
    CRect* const clip = scene.RectOrNull();
    return scene.TargetPlane().Fill(rect, static_cast<unsigned char>(scene.Pick(0, 255)), clip);
}

int Multiply(Scene& scene) {
    CRect* const rect = scene.RectOrNull();
    return scene.TargetPlane().Multiply(rect, scene.Pick(0, 3) ? scene.Pick(0, 256) : scene.Pick(-70000, 70000));
}

int Invert(Scene& scene) {
    return scene.TargetPlane().Invert(scene.RectOrNull());
}

int SetImage(Scene& scene) {
    winext::CDib image;
    const int width = scene.Pick(0, 50), height = scene.Pick(-50, 50);
    if (!image.Create(width, height, scene.Pick(0, 9) ? 8 : 32)) {
        return -1;
    }
    const bool isRamp = scene.Pick(0, 1) != 0;
    for (int i = 0; i < 256; ++i) {
        image.SetColor(i, isRamp ? static_cast<DWORD>(i) * 0x010101 : scene.Color());
    }
    for (int i = 0; i < image.GetPitch() * image.GetHeight(); ++i) {
        image.GetBits()[i] = static_cast<unsigned char>(scene.Pick(0, 255));
    }
    return scene.TargetPlane().SetImage(image);
}

const std::vector<Operation> operations = {
    {"CSurface::FillColor", FillColor},
    {"CSurface::CopyBlt", CopyBlt},
    {"CSurface::CopyBlt onto itself", CopyOntoItself},
    {"CSurface::TransparentBlt", TransparentBlt},
    {"CSurface::ShadowBlt", ShadowBlt},
    {"CSurface::StretchBlt", StretchBlt},
    {"CAlphaChannel::Fill", Fill},
    {"CAlphaChannel::CopyBlt", BetweenPlanes<&CAlphaChannel::CopyBlt>},
    {"CAlphaChannel::Merge", BetweenPlanes<&CAlphaChannel::Merge>},
    {"CAlphaChannel::BltMix", BetweenPlanes<&CAlphaChannel::BltMix>},
    {"CAlphaChannel::Multiply", Multiply},
    {"CAlphaChannel::Invert", Invert},
    {"CAlphaChannel::TransparentMask", MaskFromColors<&CAlphaChannel::TransparentMask>},
    {"CAlphaChannel::OpaqueMask", MaskFromColors<&CAlphaChannel::OpaqueMask>},
    {"CAlphaChannel::SetImage", SetImage},
};

}   // namespace

std::span<const Operation> Operations() {
    return operations;
}

void ChooseCopyAndFill() {
    ColorStore::UseBestProfile();
}

}   // namespace rastel::storm
