#include "rastel/raster/triangle.h"

#include "rastel/platform/user.h"

namespace rastel::raster {

CRect ClipOf(const CSurfaceBase& target, const CRect* pClip) {
    const CRect whole = target.GetRect();
    CRect clip;   // stays empty where they don't meet
    ::IntersectRect(&clip, &whole, pClip ? pClip : &whole);
    return clip;
}

bool HasNothingToDraw(const FACE3D& face, const CRect& clip) {
    const FACE3D::Vertex &a = face.vertices[0], &b = face.vertices[1], &c = face.vertices[2];
    return std::max({a.y, b.y, c.y}) < clip.top || std::min({a.y, b.y, c.y}) >= clip.bottom ||
           std::max({a.x, b.x, c.x}) < clip.left || std::min({a.x, b.x, c.x}) >= clip.right ||
           (a.x == b.x && b.x == c.x) || (a.y == b.y && b.y == c.y);
}

bool KeepsLimits(const FACE3D& face, int textureWidth, int textureHeight) {
    constexpr int low = -32768, high = 32767;
    constexpr int farRow = 1 << 30;   // heights must fit 32 bits
    const int uEnd = std::min(textureWidth, high + 1), vEnd = std::min(textureHeight, high + 1);
    const auto isWithin = [=](const FACE3D::Vertex& vertex) {
        return vertex.x >= low && vertex.x <= high && vertex.y > -farRow && vertex.y <= farRow && vertex.u >= 0 &&
               vertex.u < uEnd && vertex.v >= 0 && vertex.v < vEnd;
    };
    const FACE3D::Vertex &a = face.vertices[0], &b = face.vertices[1], &c = face.vertices[2];
    return isWithin(a) && isWithin(b) && isWithin(c) && std::max({a.x, b.x, c.x}) - std::min({a.x, b.x, c.x}) <= high;
}

}   // namespace rastel::raster
