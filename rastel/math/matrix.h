// A 4 x 4 matrix of floats, in rows: element 4 r + c is row r, column c. Row vectors stand on its left, so that a
// translation lies in elements 12 to 14 and A * B does A first. A plain value: any thread may use its own.
//
// Sums of products are formed in double from the float operands and rounded to float once, when an element is stored.
#pragma once

#include "rastel/platform/export.h"

class RASTEL_API MMatrix44 {
public:
    float m[16];

    MMatrix44();   // leaves the elements unset; Identity makes it usable
    MMatrix44(float m00, float m01, float m02, float m03, float m10, float m11, float m12, float m13, float m20,
              float m21, float m22, float m23, float m30, float m31, float m32, float m33);
    MMatrix44(const MMatrix44&) = default;
    MMatrix44& operator=(const MMatrix44&) = default;

    MMatrix44 operator+(const MMatrix44& other) const;
    MMatrix44 operator-(const MMatrix44& other) const;
    MMatrix44& operator+=(const MMatrix44& other);
    MMatrix44 operator*(const MMatrix44& other) const;
    MMatrix44& operator*=(const MMatrix44& other);   // `other` may be this matrix

    void Identity();

    // Multiply this matrix on the right. Rotate turns about x, then y, then z, by radians; an angle of exactly 0 is
    // left out. Sines and cosines are rounded to float.
    MMatrix44& Rotate(float x, float y, float z);
    MMatrix44& Scale(float x, float y, float z);

    // Replaces the whole matrix by a translation: what was in it is gone.
    MMatrix44& Translate(float x, float y, float z);
};
