// The native objects behind the wrapper classes, and what every flat function does first and last.
#pragma once

#include <cairo.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "rastel/platform/portable/gdiplus/flat.h"

namespace rastel::platform::gdip {

struct MatrixObject : Gdiplus::GpMatrix {
    cairo_matrix_t matrix{1, 0, 0, 1, 0, 0};
};

struct BrushObject : Gdiplus::GpBrush {
    virtual ~BrushObject() = default;
    virtual std::unique_ptr<BrushObject> Clone() const = 0;
};

struct SolidBrushObject final : BrushObject {
    explicit SolidBrushObject(DWORD argb) : color(argb) {}
    std::unique_ptr<BrushObject> Clone() const override { return std::make_unique<SolidBrushObject>(*this); }
    DWORD color;
};

struct GradientBrushObject final : BrushObject {
    std::unique_ptr<BrushObject> Clone() const override { return std::make_unique<GradientBrushObject>(*this); }
    double x = 0, y = 0;     // where the first colour is
    double dx = 0, dy = 0;   // from there to the second one
    DWORD first = 0, second = 0;
    Gdiplus::WrapMode wrap = Gdiplus::WrapModeTile;
};

struct PenObject : Gdiplus::GpPen {
    std::unique_ptr<BrushObject> brush;
    double width = 1;
    Gdiplus::DashStyle dash = Gdiplus::DashStyleSolid;
    Gdiplus::LineCap cap = Gdiplus::LineCapFlat;
    Gdiplus::LineJoin join = Gdiplus::LineJoinMiter;
    double miterLimit = 10;
};

struct FontFamilyObject : Gdiplus::GpFontFamily {
    std::string name;   // UTF-8
};

struct FontObject : Gdiplus::GpFont {
    std::string family;
    double pixels = 0;
    int style = 0;
};

struct StringFormatObject : Gdiplus::GpStringFormat {
    int flags = 0;
    Gdiplus::StringAlignment align = Gdiplus::StringAlignmentNear;
    Gdiplus::StringAlignment lineAlign = Gdiplus::StringAlignmentNear;
};

// The tag is a base without a table, so that it may lie elsewhere in the object than at its beginning.
inline BrushObject* BrushOf(const Gdiplus::GpBrush* brush) {
    return const_cast<BrushObject*>(static_cast<const BrushObject*>(brush));
}

template <class Object, class Tag>
Object* ObjectOf(const Tag* tag) {
    return const_cast<Object*>(static_cast<const Object*>(tag));
}

// Runs the body of a flat function; without memory it gives OutOfMemory.
template <class Body>
Gdiplus::Status Guarded(Body&& body) {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return Gdiplus::OutOfMemory;
    } catch (const std::length_error&) {
        return Gdiplus::OutOfMemory;
    }
}

// A new object for the host, or null in `target` and why.
template <class Object, class Tag, class Fill>
Gdiplus::Status Create(Tag** target, Fill&& fill) {
    if (!target) {
        return Gdiplus::InvalidParameter;
    }
    *target = nullptr;
    return Guarded([&] {
        auto object = std::make_unique<Object>();
        const Gdiplus::Status status = fill(*object);
        if (status == Gdiplus::Ok) {
            *target = object.release();
        }
        return status;
    });
}

}   // namespace rastel::platform::gdip
