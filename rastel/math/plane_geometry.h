// Rectangles and points turned about a centre, and the vertex lists that textured quads are drawn from.
//
// A vertex list is four points: the corners top-left, top-right, bottom-right and bottom-left of the rectangle they
// came from, its right and bottom as they stand. Angles are radians; x' = x cos a - y sin a, y' = x sin a + y cos a
// about the centre, clockwise on a screen. Where a function rounds it adds 0.5 and cuts off toward zero: 2.5 gives 3,
// -1.2 gives 0. What lies beyond 32 bits becomes the nearest number, and NaN 0. Nothing here fails.
#pragma once

#include "rastel/platform/framework.h"

// `count` points in place, rounded. A count of 0 or less, or no points, changes nothing.
RASTEL_API void Rotate(CPoint* points, int count, double angle, const CPoint& centre);
RASTEL_API void Rotate(double& x, double& y, double angle, double centreX, double centreY);   // not rounded

RASTEL_API void RotateRect(CPoint (&corners)[4], const CRect& rect, double angle, const CPoint& centre);   // rounded

// The box round the turned rectangle; at an angle of exactly 0 the rectangle itself, normal or not. The search starts
// at 8888 and -8888: left and top are never above the one, right and bottom never below the other.
RASTEL_API CRect RotateBoundRect(const CRect& rect, double angle, const CPoint& centre);
RASTEL_API CRect GetBoundingRectOfVertexList(CPoint (&corners)[4]);   // smallest and largest x and y

RASTEL_API CPoint ScaleRotatePoint(const CPoint& point, const CPoint& centre, double angle, double scale);   // rounded
RASTEL_API void BuildScaledRotatedVertexList(const CRect& rect, const CPoint& centre, double angle, double scale,
                                             CPoint (&corners)[4]);

// Turned in space about x, then y, then z, scaled, and flattened by dropping z: no perspective. In float precision,
// and cut off toward zero, not rounded.
RASTEL_API void BuildScaledRotatedVertexList3d(const CRect& rect, const CPoint& centre, double angleX, double angleY,
                                               double angleZ, double scale, CPoint (&corners)[4]);
