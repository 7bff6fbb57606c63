#include "rastel/math/vector.h"

#include <cmath>
#include <functional>

#include "rastel/math/matrix.h"
#include "rastel/math/rounding.h"

MVector2::MVector2() {}

MVector2::MVector2(double newX, double newY) : x(newX), y(newY) {}

MVector2::MVector2(tagPOINT& point) : x(point.x), y(point.y) {}

MVector2::MVector2(tagSIZE& size) : x(size.cx), y(size.cy) {}

bool MVector2::operator==(const MVector2& other) const {
    return x == other.x && y == other.y;
}

bool MVector2::operator<(const MVector2& other) const {
    return std::less<const MVector2*>()(this, &other);
}

MVector2 MVector2::operator+(const MVector2& other) const {
    return MVector2(x + other.x, y + other.y);
}

MVector2 MVector2::operator-(const MVector2& other) const {
    return MVector2(x - other.x, y - other.y);
}

MVector2 MVector2::operator*(double factor) const {
    return MVector2(x * factor, y * factor);
}

MVector2& MVector2::operator+=(const MVector2& other) {
    return *this = *this + other;
}

MVector2& MVector2::operator-=(const MVector2& other) {
    return *this = *this - other;
}

MVector2& MVector2::operator*=(double factor) {
    return *this = *this * factor;
}

double MVector2::Dot(const MVector2& other) const {
    return x * other.x + y * other.y;
}

double MVector2::Length() const {
    return std::sqrt(x * x + y * y);
}

int MVector2::Normalize() {
    const double length = Length();
    if (length == 0.0) {
        return 0;
    }
    x /= length;
    y /= length;
    return 1;
}

void MVector2::ForceLength(double length) {
    const double current = Length();
    if (current != 0.0) {
        *this *= length / current;
    }
}

int MVector2::CCW(const MVector2& a, const MVector2& b) const {
    const MVector2 d1 = a - *this, d2 = b - *this;
    if (d1.x * d2.y > d1.y * d2.x) {
        return 1;
    }
    if (d1.x * d2.y < d1.y * d2.x) {
        return -1;
    }
    if (d1.x * d2.x < 0 || d1.y * d2.y < 0) {
        return -1;
    }
    return d1.Dot(d1) < d2.Dot(d2) ? 1 : 0;
}

void MVector2::Rotate(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    *this = MVector2(c * x - s * y, s * x + c * y);
}

tagPOINT MVector2::GetPOINT() const {
    return {rastel::math::Truncated(x), rastel::math::Truncated(y)};
}

MVector3::MVector3() {}

MVector3::MVector3(double newX, double newY, double newZ) : x(newX), y(newY), z(newZ) {}

bool MVector3::operator==(const MVector3& other) const {
    return x == other.x && y == other.y && z == other.z;
}

bool MVector3::operator<(const MVector3& other) const {
    return std::less<const MVector3*>()(this, &other);
}

MVector3 MVector3::operator+(const MVector3& other) const {
    return MVector3(x + other.x, y + other.y, z + other.z);
}

MVector3 MVector3::operator-(const MVector3& other) const {
    return MVector3(x - other.x, y - other.y, z - other.z);
}

MVector3 MVector3::operator*(const MVector3& other) const {
    return MVector3(y * other.z - other.y * z, z * other.x - x * other.z, other.y * x - y * other.x);
}

MVector3 MVector3::operator*(double factor) const {
    return MVector3(x * factor, y * factor, z * factor);
}

MVector3& MVector3::operator+=(const MVector3& other) {
    return *this = *this + other;
}

MVector3& MVector3::operator-=(const MVector3& other) {
    return *this = *this - other;
}

MVector3& MVector3::operator*=(double factor) {
    return *this = *this * factor;
}

MVector3& MVector3::operator*=(const MVector3& other) {
    return *this = *this * other;
}

MVector3& MVector3::operator*=(const MMatrix44& matrix) {
    const auto column = [&](int c) {
        const float* const m = matrix.m;
        // Volatile: g++ 12 computes two columns at once and then loses the way through float and back.
        const volatile float rounded = static_cast<float>(m[c] * x + m[c + 4] * y + m[c + 8] * z);
        return static_cast<double>(rounded);
    };
    return *this = MVector3(column(0), column(1), column(2));
}

double MVector3::Dot(const MVector3& other) const {
    return x * other.x + y * other.y + z * other.z;
}

double MVector3::Length() const {
    return std::sqrt(x * x + y * y + z * z);
}

int MVector3::Normalize() {
    const double length = Length();
    if (length == 0.0) {
        return 0;
    }
    x /= length;
    y /= length;
    z /= length;
    return 1;
}

void MVector3::ForceLength(double length) {
    const double current = Length();
    if (current != 0.0) {
        *this *= length / current;
    }
}
