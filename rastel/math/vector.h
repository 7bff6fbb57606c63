// Vectors of two and three doubles, for geometry. Plain values: any thread may use its own.
//
// A vector is fresh from its default constructor without values. Every comparison is exact; there is no tolerance.
// Angles are radians and turn from the x axis towards the y axis, which looks clockwise where y grows downwards.
#pragma once

#include "rastel/platform/types.h"

class MMatrix44;

class RASTEL_API MVector2 {
public:
    double x, y;

    MVector2();   // leaves the members unset
    MVector2(double newX, double newY);
    MVector2(const MVector2&) = default;
    MVector2(tagPOINT& point);
    MVector2(tagSIZE& size);
    MVector2& operator=(const MVector2&) = default;

    bool operator==(const MVector2& other) const;
    bool operator<(const MVector2& other) const;   // by the objects' addresses, for containers; values don't count

    MVector2 operator+(const MVector2& other) const;
    MVector2 operator-(const MVector2& other) const;
    MVector2 operator*(double factor) const;
    MVector2& operator+=(const MVector2& other);
    MVector2& operator-=(const MVector2& other);
    MVector2& operator*=(double factor);

    double Dot(const MVector2& other) const;
    double Length() const;
    int Normalize();                   // to length 1; 0, and no change, for a length of 0
    void ForceLength(double length);   // negative reverses; a length of 0 has no direction and stays

    // The turn from this point through `a` to `b`: 1 towards the y axis, -1 the other way. On one line: -1 when this
    // point lies between the others, 1 when `a` does, 0 when `b` does or points coincide.
    int CCW(const MVector2& a, const MVector2& b) const;
    void Rotate(double angle);   // about the origin
    tagPOINT GetPOINT() const;   // cut off toward zero; beyond 32 bits the nearest number, NaN gives 0
};

class RASTEL_API MVector3 {
public:
    double x, y, z;

    MVector3();   // leaves the members unset
    MVector3(double newX, double newY, double newZ);
    MVector3(const MVector3&) = default;
    MVector3& operator=(const MVector3&) = default;

    bool operator==(const MVector3& other) const;
    bool operator<(const MVector3& other) const;   // as in MVector2

    MVector3 operator+(const MVector3& other) const;
    MVector3 operator-(const MVector3& other) const;
    MVector3 operator*(const MVector3& other) const;   // the cross product
    MVector3 operator*(double factor) const;
    MVector3& operator+=(const MVector3& other);
    MVector3& operator-=(const MVector3& other);
    MVector3& operator*=(double factor);
    MVector3& operator*=(const MVector3& other);   // the cross product; `other` may be this vector

    // As a row vector through the matrix's upper left 3 x 3 elements: a direction, which translation doesn't move.
    // Summed in double; each result is rounded to float, once.
    MVector3& operator*=(const MMatrix44& matrix);

    double Dot(const MVector3& other) const;
    double Length() const;
    int Normalize();   // as in MVector2
    void ForceLength(double length);
};
