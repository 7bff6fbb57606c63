// Composites over stores that tests can look into.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "rastel/composite/adv_surface.h"
#include "rastel/display/display_manager.h"
#include "rastel/surface/dib_surface.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/reference.h"
#include "tests/support/pixels.h"
#include "tests/support/plane.h"
#include "tests/support/test_store.h"

namespace rastel::test {

// With its protected kernels opened, and a Plane of the test's own as its plane.
class OpenComposite : public CAdvSurface {
public:
    OpenComposite(int width, int height, int withAlpha) {
        EXPECT_EQ(InitializeSurface(width, height, 0), 1);
        if (withAlpha) {
            const Reference<Plane> plane(new Plane(width, height));
            SetAlphaChannel(plane.get());
        }
    }
    using CAdvSurface::InternalAlphaBltAdvCPU;
    using CAdvSurface::InternalAlphaBltAdvMMX;
    using CAdvSurface::InternalAlphaColorBltAdvCPU;
    using CAdvSurface::InternalAlphaColorBltAdvMMX;

    std::vector<DWORD> Colors() { return PixelsOf(*GetSurface()); }
    Bytes Alphas() { return GetAlphaChannel() ? BytesOf(*GetAlphaChannel()) : Bytes(); }
    void SetColors(const std::vector<DWORD>& colors) { SetPixels(*GetSurface(), colors); }
    void SetAlphas(const Bytes& alphas) { static_cast<Plane&>(*GetAlphaChannel()).Set(alphas); }
};

class CompositeTest : public ::testing::Test {
protected:
    void SetUp() override { OpenSurface::UseBestProfile(); }
    void TearDown() override {
        EnableMMX(1);
        CSurface::s_pCopyBlt = nullptr;
        CSurface::s_pFillColor = nullptr;
    }

    CDisplayManager manager;
};

}   // namespace rastel::test
