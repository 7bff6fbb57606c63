#include "rastel/math/matrix.h"

#include <cmath>

MMatrix44::MMatrix44() {}

MMatrix44::MMatrix44(float m00, float m01, float m02, float m03, float m10, float m11, float m12, float m13, float m20,
                     float m21, float m22, float m23, float m30, float m31, float m32, float m33)
    : m{m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33} {}

MMatrix44 MMatrix44::operator+(const MMatrix44& other) const {
    return MMatrix44(*this) += other;
}

MMatrix44 MMatrix44::operator-(const MMatrix44& other) const {
    MMatrix44 result;
    for (int i = 0; i < 16; ++i) {
        result.m[i] = static_cast<float>(static_cast<double>(m[i]) - other.m[i]);
    }
    return result;
}

MMatrix44& MMatrix44::operator+=(const MMatrix44& other) {
    for (int i = 0; i < 16; ++i) {
        m[i] = static_cast<float>(static_cast<double>(m[i]) + other.m[i]);
    }
    return *this;
}

MMatrix44 MMatrix44::operator*(const MMatrix44& other) const {
    MMatrix44 result;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const auto product = [&](int k) { return static_cast<double>(m[4 * row + k]) * other.m[4 * k + column]; };
            result.m[4 * row + column] = static_cast<float>(product(0) + product(1) + product(2) + product(3));
        }
    }
    return result;
}

MMatrix44& MMatrix44::operator*=(const MMatrix44& other) {
    return *this = *this * other;
}

void MMatrix44::Identity() {
    *this = MMatrix44(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
}

MMatrix44& MMatrix44::Rotate(float x, float y, float z) {
    const auto sine = [](float angle) { return static_cast<float>(std::sin(static_cast<double>(angle))); };
    const auto cosine = [](float angle) { return static_cast<float>(std::cos(static_cast<double>(angle))); };
    const float sx = sine(x), cx = cosine(x), sy = sine(y), cy = cosine(y), sz = sine(z), cz = cosine(z);
    if (x != 0) {
        *this *= MMatrix44(1, 0, 0, 0, 0, cx, sx, 0, 0, -sx, cx, 0, 0, 0, 0, 1);
    }
    if (y != 0) {
        *this *= MMatrix44(cy, 0, -sy, 0, 0, 1, 0, 0, sy, 0, cy, 0, 0, 0, 0, 1);
    }
    if (z != 0) {
        *this *= MMatrix44(cz, sz, 0, 0, -sz, cz, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    }
    return *this;
}

MMatrix44& MMatrix44::Scale(float x, float y, float z) {
    return *this *= MMatrix44(x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1);
}

MMatrix44& MMatrix44::Translate(float x, float y, float z) {
    return *this = MMatrix44(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1);
}
