#include "tests/storm/operations.h"

#include <cstring>
#include <vector>

#include "rastel/alpha/dib_alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/image/dib.h"
#include "rastel/raster/face3d.h"
#include "rastel/surface/dib_surface.h"
#include "rastel/surface/pixel_lock.h"

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

// Copies the rows of one store to another of its size.
void CopyRows(CSurfaceBase& target, CSurfaceBase& source) {
    const PixelLock to(target), from(source);
    for (int y = 0; to && from && y < source.GetHeight(); ++y) {
        std::memcpy(to.At(0, y), from.At(0, y),
                    static_cast<std::size_t>(source.GetWidth()) * static_cast<std::size_t>(source.GetBytesPrPixel()));
    }
}

// A stretch needs device contexts, which the scene's stores don't have.
int StretchBltInContexts(Scene& scene) {
    CDibSurface target, source;
    if (!target.InitializeSurface(scene.Target().GetWidth(), scene.Target().GetHeight()) ||
        !source.InitializeSurface(scene.Source().GetWidth(), scene.Source().GetHeight())) {
        return -1;
    }
    CopyRows(target, scene.Target());
    CopyRows(source, scene.Source());
    CRect* const to = scene.RectOrNull();
    CRect* const from = scene.RectOrNull();
    CRect* const clip = scene.RectOrNull();
    const int result = target.StretchBlt(to, source, from, clip);
    CopyRows(scene.Target(), target);
    return result;
}

int StretchPlaneInContexts(Scene& scene) {
    CDibAlphaChannel target, source;
    if (!target.Initialize(scene.TargetPlane().GetWidth(), scene.TargetPlane().GetHeight()) ||
        !source.Initialize(scene.SourcePlane().GetWidth(), scene.SourcePlane().GetHeight())) {
        return -1;
    }
    CopyRows(target, scene.TargetPlane());
    CopyRows(source, scene.SourcePlane());
    CRect* const to = scene.RectOrNull();
    CRect* const from = scene.RectOrNull();
    CRect* const clip = scene.RectOrNull();
    CRect whole = target.GetRect();
    const int result = target.StretchBlt(to ? *to : whole, source, from, clip);
    CopyRows(scene.TargetPlane(), target);
    return result;
}

int StretchBlt(Scene& scene) {
    CRect* const target = scene.RectOrNull();
    CRect* const source = scene.RectOrNull();
    return scene.Target().StretchBlt(target, scene.Source(), source, scene.RectOrNull());
}

int Alpha(Scene& scene) {
    return scene.Pick(0, 3) ? scene.Pick(0, 255) : scene.Pick(0, 1) * 255;
}

int AlphaBlt(Scene& scene) {
    const BlitArguments a(scene);
    return scene.Target().AlphaBlt(a.x, a.y, scene.Source(), scene.SourcePlane(), a.source, a.clip);
}

int AlphaColorBlt(Scene& scene) {
    const BlitArguments a(scene);
    return scene.Target().AlphaColorBlt(a.x, a.y, scene.Color(), scene.SourcePlane(), a.source, a.clip);
}

int AlphaConstBlt(Scene& scene) {
    const BlitArguments a(scene);
    return scene.Target().AlphaConstBlt(a.x, a.y, scene.Source(), Alpha(scene), a.source, a.clip);
}

int AlphaConstBltEx(Scene& scene) {
    const BlitArguments a(scene);
    return scene.Target().AlphaConstBltEx(a.x, a.y, scene.Source(), Alpha(scene), a.source, &scene.Second(), a.clip);
}

int AlphaConstTransBlt(Scene& scene) {
    const BlitArguments a(scene);
    const int alpha = Alpha(scene);
    return scene.Target().AlphaConstTransBlt(a.x, a.y, scene.Source(), alpha, scene.Color(), a.source, a.clip);
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

// What a filter's result comes to, as a number; the result is given back.
int Summed(CAlphaChannel* plane) {
    if (!plane) {
        return -1;
    }
    std::uint32_t sum = static_cast<std::uint32_t>(plane->GetWidth());
    if (const PixelLock lock(*plane); lock) {
        for (int y = 0; y < plane->GetHeight(); ++y) {
            for (int x = 0; x < plane->GetWidth(); ++x) {
                sum = sum * 31 + *lock.At(x, y);
            }
        }
    }
    plane->Release();
    return static_cast<int>(sum);
}

int Blur(Scene& scene) {
    return Summed(scene.TargetPlane().Blur(scene.Pick(-3, 33)));
}

int Expand(Scene& scene) {
    const int radius = scene.Pick(-3, 23);
    return Summed(scene.TargetPlane().Expand(radius, scene.Pick(0, 255)));
}

int Subtract(Scene& scene) {
    const int x = scene.Position(), y = scene.Position();
    return scene.TargetPlane().Subtract(scene.SourcePlane(), x, y);
}

int TressHold(Scene& scene) {
    const auto byte = [&] { return static_cast<unsigned char>(scene.Pick(0, 255)); };
    const int level = scene.Pick(-5, 260);
    const unsigned char low = byte(), high = byte();
    return scene.TargetPlane().TressHold(level, low, high);
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

// Composites over the scene's stores, with and without planes and keys.
struct Composites {
    explicit Composites(Scene& scene) {
        target.SetSurface(&scene.Target());
        source.SetSurface(&scene.Source());
        if (scene.Pick(0, 1)) {
            target.SetAlphaChannel(&scene.TargetPlane());
        }
        const int kind = scene.Pick(0, 2);
        if (kind == 0) {
            source.SetAlphaChannel(&scene.SourcePlane());
        } else if (kind == 1) {
            source.SetColorKey(scene.Color());
        }
    }
    CAdvSurface target, source;
};

template <auto operation>
int BetweenComposites(Scene& scene) {
    Composites composites(scene);
    const BlitArguments a(scene);
    return (composites.target.*operation)(a.x, a.y, composites.source, a.source, a.clip);
}

int CompositeAlphaBlt(Scene& scene) {
    Composites composites(scene);
    const BlitArguments a(scene);
    return composites.target.AlphaBlt(a.x, a.y, composites.source, scene.SourcePlane(), a.source, a.clip);
}

int CompositeAlphaColorBlt(Scene& scene) {
    Composites composites(scene);
    const BlitArguments a(scene);
    return composites.target.AlphaColorBlt(a.x, a.y, scene.Color(), scene.SourcePlane(), a.source, a.clip);
}

int CompositeFade(Scene& scene) {
    Composites composites(scene);
    const BlitArguments a(scene);
    return composites.target.AlphaConstBlt(a.x, a.y, composites.source, scene.Pick(-10, 265), a.source, a.clip);
}

int MakeMask(Scene& scene) {
    Composites composites(scene);
    const int border = scene.Pick(-5, 20);
    const auto outside = static_cast<unsigned char>(scene.Pick(0, 255));
    return Summed(composites.source.MakeMask(border, outside, static_cast<unsigned char>(scene.Pick(0, 255))));
}

int ApplyKey(Scene& scene) {
    Composites composites(scene);
    composites.source.SetColorKey(scene.Color());
    return composites.source.ApplyTransparentColorToAlpha();
}

// Mostly near the target and inside the source, so that most faces keep their promises.
FACE3D Face(Scene& scene, const CSurfaceBase& source) {
    FACE3D face;
    for (auto& vertex : face.vertices) {
        vertex.x = scene.Position() + scene.Pick(0, 40);
        vertex.y = scene.Pick(0, 3) ? scene.Pick(-10, 50) : scene.Pick(0, 2) * 10;
        vertex.u = scene.Pick(0, source.GetWidth() - (scene.Pick(0, 19) ? 1 : 0));
        vertex.v = scene.Pick(0, source.GetHeight() - (scene.Pick(0, 19) ? 1 : 0));
    }
    return face;
}

int TexturedTriangle(Scene& scene) {
    FACE3D face = Face(scene, scene.Source());
    return scene.Target().BltTexturedTriangle(face, scene.Source(), scene.RectOrNull());
}

int TexturedTriangleTrans(Scene& scene) {
    FACE3D face = Face(scene, scene.Source());
    const DWORD key = scene.Color();
    return scene.Target().BltTexturedTriangleTrans(face, scene.Source(), key, scene.RectOrNull());
}

int TexturedTriangleAlpha(Scene& scene) {
    FACE3D face = Face(scene, scene.Source());
    return scene.Target().BltTexturedTriangleAlpha(face, scene.Source(), scene.SourcePlane(), scene.RectOrNull());
}

int TexturedTriangleOfPlanes(Scene& scene) {
    FACE3D face = Face(scene, scene.SourcePlane());
    return scene.TargetPlane().BltTexturedTriangle(face, scene.SourcePlane(), scene.RectOrNull());
}

struct Corners {
    explicit Corners(Scene& scene) {
        for (CPoint& point : points) {
            const int x = scene.Position(), y = scene.Position();
            const int dx = scene.Pick(0, 1) * 25, dy = scene.Pick(0, 1) * 25;
            point = CPoint(x, y) + CSize(dx, dy);
        }
    }
    CPoint points[4];
};

int QuadOfPlanes(Scene& scene) {
    Corners corners(scene);
    CRect* const source = scene.RectOrNull();
    return scene.TargetPlane().BltTexture(corners.points, nullptr, scene.SourcePlane(), source, scene.RectOrNull());
}

int QuadOfComposites(Scene& scene) {
    Composites composites(scene);
    Corners corners(scene);
    CRect* const source = scene.RectOrNull();
    return composites.target.BltTexture(corners.points, composites.source, source, scene.RectOrNull());
}

// Between planes a turned rectangle takes memory for its whole bounding box, so it stays near.
struct Turn {
    explicit Turn(Scene& scene) {
        const int left = scene.Pick(-20, 20), top = scene.Pick(-20, 20);
        const int width = scene.Pick(0, 60), height = scene.Pick(0, 60);
        target = CRect(left, top, left + width, top + height);
        angle = scene.Pick(0, 5) ? scene.Pick(-70, 70) / 10.0 : 0;
        const int x = scene.Pick(-10, 40), y = scene.Pick(-10, 40);
        centre = CPoint(x, y);
        source = scene.RectOrNull();
        clip = scene.RectOrNull();
    }
    CRect target;
    CRect *source, *clip;
    CPoint centre;
    double angle;
};

int RotatePlane(Scene& scene) {
    Turn turn(scene);
    return scene.TargetPlane().BltRotate(scene.Pick(0, 3) ? &turn.target : nullptr, turn.angle, turn.centre,
                                         scene.SourcePlane(), turn.source, turn.clip);
}

int RotateComposite(Scene& scene) {
    Composites composites(scene);
    Turn turn(scene);
    return composites.target.BltRotate(scene.Pick(0, 3) ? &turn.target : nullptr, turn.angle, turn.centre,
                                       composites.source, turn.source, turn.clip);
}

constexpr bool formsDiffer = true;

const std::vector<Operation> operations = {
    {"CSurface::FillColor", FillColor},
    {"CSurface::CopyBlt", CopyBlt},
    {"CSurface::CopyBlt onto itself", CopyOntoItself},
    {"CSurface::TransparentBlt", TransparentBlt},
    {"CSurface::ShadowBlt", ShadowBlt},
    {"CSurface::StretchBlt", StretchBlt},
    {"CSurface::StretchBlt in contexts", StretchBltInContexts},
    {"CSurface::AlphaBlt", AlphaBlt, true},
    {"CSurface::AlphaColorBlt", AlphaColorBlt, true},
    {"CSurface::AlphaConstBlt", AlphaConstBlt, true},
    {"CSurface::AlphaConstBltEx", AlphaConstBltEx, true},
    {"CSurface::AlphaConstTransBlt", AlphaConstTransBlt, true},
    {"CAlphaChannel::Fill", Fill},
    {"CAlphaChannel::CopyBlt", BetweenPlanes<&CAlphaChannel::CopyBlt>},
    {"CAlphaChannel::Merge", BetweenPlanes<&CAlphaChannel::Merge>},
    {"CAlphaChannel::BltMix", BetweenPlanes<&CAlphaChannel::BltMix>},
    {"CAlphaChannel::Multiply", Multiply},
    {"CAlphaChannel::Invert", Invert},
    {"CAlphaChannel::TransparentMask", MaskFromColors<&CAlphaChannel::TransparentMask>},
    {"CAlphaChannel::OpaqueMask", MaskFromColors<&CAlphaChannel::OpaqueMask>},
    {"CAlphaChannel::StretchBlt in contexts", StretchPlaneInContexts},
    {"CAlphaChannel::Blur", Blur},
    {"CAlphaChannel::Expand", Expand},
    {"CAlphaChannel::Subtract", Subtract},
    {"CAlphaChannel::TressHold", TressHold},
    {"CAlphaChannel::SetImage", SetImage},
    {"CAdvSurface::Blt", BetweenComposites<&CAdvSurface::Blt>, formsDiffer},
    {"CAdvSurface::CopyBlt", BetweenComposites<&CAdvSurface::CopyBlt>},
    {"CAdvSurface::AlphaBlt", CompositeAlphaBlt, formsDiffer},
    {"CAdvSurface::AlphaColorBlt", CompositeAlphaColorBlt, formsDiffer},
    {"CAdvSurface::AlphaConstBlt", CompositeFade, formsDiffer},
    {"CAdvSurface::MakeMask", MakeMask},
    {"CAdvSurface::ApplyTransparentColorToAlpha", ApplyKey},
    {"CSurface::BltTexturedTriangle", TexturedTriangle},
    {"CSurface::BltTexturedTriangleTrans", TexturedTriangleTrans},
    {"CSurface::BltTexturedTriangleAlpha", TexturedTriangleAlpha},
    {"CAlphaChannel::BltTexturedTriangle", TexturedTriangleOfPlanes},
    {"CAlphaChannel::BltTexture", QuadOfPlanes},
    {"CAlphaChannel::BltRotate", RotatePlane},
    {"CAdvSurface::BltTexture", QuadOfComposites},
    {"CAdvSurface::BltRotate", RotateComposite, formsDiffer},
};

}   // namespace

std::span<const Operation> Operations() {
    return operations;
}

void ChooseCopyAndFill() {
    ColorStore::UseBestProfile();
}

}   // namespace rastel::storm
