#include "rastel/math/plane_geometry.h"

#include <algorithm>
#include <cmath>

#include "rastel/math/matrix.h"
#include "rastel/math/rounding.h"
#include "rastel/math/vector.h"

using rastel::math::Rounded;
using rastel::math::Truncated;
using rastel::platform::WrappedDifference;

namespace {

void SetVertexList(CPoint (&corners)[4], const CRect& rect) {
    corners[0] = CPoint(rect.left, rect.top);
    corners[1] = CPoint(rect.right, rect.top);
    corners[2] = CPoint(rect.right, rect.bottom);
    corners[3] = CPoint(rect.left, rect.bottom);
}

}   // namespace

void Rotate(CPoint* points, int count, double angle, const CPoint& centre) {
    const double c = std::cos(angle), s = std::sin(angle);
    const CPoint about = centre;   // which may be one of the points
    for (int i = 0; points && i < count; ++i) {
        const double dx = WrappedDifference(points[i].x, about.x), dy = WrappedDifference(points[i].y, about.y);
        points[i].x = Rounded(dx * c - dy * s + about.x);
        points[i].y = Rounded(dx * s + dy * c + about.y);
    }
}

void Rotate(double& x, double& y, double angle, double centreX, double centreY) {
    const double c = std::cos(angle), s = std::sin(angle);
    const double dx = x - centreX, dy = y - centreY;
    x = centreX + (dx * c - dy * s);
    y = dx * s + dy * c + centreY;
}

void RotateRect(CPoint (&corners)[4], const CRect& rect, double angle, const CPoint& centre) {
    const CPoint about = centre;
    SetVertexList(corners, rect);
    Rotate(corners, 4, angle, about);
}

CRect RotateBoundRect(const CRect& rect, double angle, const CPoint& centre) {
    if (angle == 0.0) {
        return rect;
    }
    CPoint corners[4];
    RotateRect(corners, rect, angle, centre);
    CRect bound(8888, 8888, -8888, -8888);
    for (const CPoint& corner : corners) {
        bound.left = std::min(bound.left, corner.x);
        bound.top = std::min(bound.top, corner.y);
        bound.right = std::max(bound.right, corner.x);
        bound.bottom = std::max(bound.bottom, corner.y);
    }
    return bound;
}

CRect GetBoundingRectOfVertexList(CPoint (&corners)[4]) {
    CRect bound(corners[0], corners[0]);
    for (const CPoint& corner : corners) {
        bound.left = std::min(bound.left, corner.x);
        bound.top = std::min(bound.top, corner.y);
        bound.right = std::max(bound.right, corner.x);
        bound.bottom = std::max(bound.bottom, corner.y);
    }
    return bound;
}

CPoint ScaleRotatePoint(const CPoint& point, const CPoint& centre, double angle, double scale) {
    const double dx = WrappedDifference(point.x, centre.x), dy = WrappedDifference(point.y, centre.y);
    const double c = std::cos(angle), s = std::sin(angle);
    return CPoint(Rounded((dx * c - dy * s) * scale + centre.x), Rounded((dx * s + dy * c) * scale + centre.y));
}

void BuildScaledRotatedVertexList(const CRect& rect, const CPoint& centre, double angle, double scale,
                                  CPoint (&corners)[4]) {
    const CPoint about = centre;
    SetVertexList(corners, rect);
    for (CPoint& corner : corners) {
        corner = ScaleRotatePoint(corner, about, angle, scale);
    }
}

void BuildScaledRotatedVertexList3d(const CRect& rect, const CPoint& centre, double angleX, double angleY,
                                    double angleZ, double scale, CPoint (&corners)[4]) {
    const MVector3 about(centre.x, centre.y, 0);
    const float factor = static_cast<float>(scale);
    MMatrix44 turn, scaling;
    turn.Identity();
    turn.Rotate(static_cast<float>(angleX), static_cast<float>(angleY), static_cast<float>(angleZ));
    scaling.Identity();
    scaling.Scale(factor, factor, factor);
    turn *= scaling;

    SetVertexList(corners, rect);
    for (CPoint& corner : corners) {
        MVector3 point(corner.x, corner.y, 0);
        point -= about;
        point *= turn;
        point += about;
        corner = CPoint(Truncated(point.x), Truncated(point.y));
    }
}
