// A picture on a mesh in space, drawn by the Direct3D device, beside the same card turned in software.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "examples/showcase/composites.h"
#include "examples/showcase/page.h"
#include "examples/showcase/paint.h"
#include "rastel/platform/com_reference.h"
#include "rastel/surface/pixel_lock.h"

namespace rastel::showcase {

namespace {

using platform::ComReference;

D3DMATRIX Turned(double around, double over) {
    const auto c = static_cast<float>(std::cos(around)), s = static_cast<float>(std::sin(around));
    const auto d = static_cast<float>(std::cos(over)), t = static_cast<float>(std::sin(over));
    D3DMATRIX matrix = {};
    const float rows[4][4] = {{c, s * t, -s * d, 0}, {0, d, t, 0}, {s, -c * t, c * d, 0}, {0, 0, 0, 1}};
    std::memcpy(matrix.m, rows, sizeof(rows));
    return matrix;
}

class SpacePage : public Page {
public:
    explicit SpacePage(const PageSetup& setup) : Page(setup), window_(setup.window) {}
    ~SpacePage() override { plane_.CleanUp(); }

    bool DrawStill();

private:
    void DrawMoving(double seconds) override;
    bool MakeScene();
    bool MakeTexture();
    void DrawScene(double seconds);
    void ShowScene();
    void DrawCard(double seconds);

    HWND window_;
    Composite screen_, card_;
    CRect scene_, flat_;
    bool hasDevice_ = false;
    CVertexBuffer plane_;
    ComReference<IDirect3DTexture9> texture_;
    ComReference<IDirect3DSurface9> copy_;   // of the back buffer, where it can be read
};

bool SpacePage::DrawStill() {
    if (!MakeStores()) {
        return false;
    }
    DrawHeader(L"in space");
    scene_ = DrawMovingPanel(layout_.Rect(24, 98, 590, 744), L"A mesh on the Direct3D device",
                             L"Initialize3D and CVertexBuffer: depth, perspective, texture");
    flat_ = DrawMovingPanel(layout_.Rect(610, 98, 1000, 744), L"The same card in software",
                            L"BuildScaledRotatedVertexList3d and BltTexture");
    FillGradient(*still_, scene_, RGB(18, 22, 34), RGB(52, 60, 88));
    FillGradient(*still_, flat_, RGB(18, 22, 34), RGB(52, 60, 88));
    hasDevice_ = scene_.Width() > 0 && scene_.Height() > 0 && MakeScene();
    if (!hasDevice_) {
        WriteText(*still_, scene_.left, scene_.top, L"There is no Direct3D here.",
                  {layout_.Length(14), FW_NORMAL, ink::white}, scene_);
    }
    KeepStill();
    screen_ = Around(*surface_);
    const int side = std::max(flat_.Width() * 6 / 10, 1);
    const example::Surface picture(manager_.CreateSurface(side, side));
    if (!picture) {
        return false;
    }
    CoverWith(*picture, CRect(0, 0, side, side), stock_.Photo(0));
    card_ = Around(*picture);
    return true;
}

bool SpacePage::MakeTexture() {
    constexpr int side = 256;
    IDirect3DTexture9* made = nullptr;
    CDirect3DWrapper::GetThis()->D3DXCreateTexture(manager_.GetDirect3DDevice(), side, side, 1, 0, D3DFMT_X8R8G8B8,
                                                   D3DPOOL_MANAGED, &made);
    texture_.reset(made);
    const example::Surface picture(manager_.CreateSurface(side, side));
    D3DLOCKED_RECT locked = {};
    if (!made || !picture) {
        return false;
    }
    CoverWith(*picture, CRect(0, 0, side, side), stock_.Photo(0));
    const PixelLock pixels(*picture);
    if (!pixels || made->LockRect(0, &locked, nullptr, 0) < 0) {
        return false;
    }
    for (int y = 0; y < side; ++y) {
        std::memcpy(static_cast<BYTE*>(locked.pBits) + static_cast<std::ptrdiff_t>(y) * locked.Pitch, pixels.At(0, y),
                    side * 4);
    }
    made->UnlockRect(0);
    return true;
}

bool SpacePage::MakeScene() {
    if (!manager_.Initialize3D(window_, scene_.Width(), scene_.Height()) || !CDirect3DWrapper::GetThis() ||
        !MakeTexture()) {
        return false;
    }
    IDirect3DDevice9& device = *manager_.GetDirect3DDevice();
    IDirect3DSurface9* back = nullptr;
    device.GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, &back);
    const ComReference<IDirect3DSurface9> owned(back);
    D3DSURFACE_DESC description = {};
    IDirect3DSurface9* copy = nullptr;
    if (back && back->GetDesc(&description) >= 0) {
        device.CreateOffscreenPlainSurface(description.Width, description.Height, description.Format, D3DPOOL_SYSTEMMEM,
                                           &copy, nullptr);
    }
    copy_.reset(copy);
    return copy && description.Format == D3DFMT_X8R8G8B8 &&
           plane_.CreatePlane(&device, D3DXVECTOR3(-1, 1, 0), D3DXVECTOR3(1, 1, 0), D3DXVECTOR3(-1, -1, 0), 12, 12, 1,
                              1, 0xFFFFFFFF);
}

void SpacePage::DrawScene(double seconds) {
    IDirect3DDevice9& device = *manager_.GetDirect3DDevice();
    D3DXMATRIX view, projection;
    const D3DXVECTOR3 eye(0, 0.4f, -3.4f), at(0, 0, 0), up(0, 1, 0);
    CDirect3DWrapper& d3dx = *CDirect3DWrapper::GetThis();
    const float aspect = static_cast<float>(scene_.Width()) / static_cast<float>(scene_.Height());
    if (!d3dx.D3DXMatrixLookAtLH(&view, &eye, &at, &up) ||
        !d3dx.D3DXMatrixPerspectiveFovLH(&projection, 0.9f, aspect, 0.5f, 20)) {
        return;
    }
    device.SetTransform(D3DTS_VIEW, &view);
    device.SetTransform(D3DTS_PROJECTION, &projection);
    device.SetRenderState(D3DRS_LIGHTING, FALSE);
    device.SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    device.SetSamplerState(0, D3DSAMP_MAGFILTER, D3DTEXF_LINEAR);
    device.SetSamplerState(0, D3DSAMP_MINFILTER, D3DTEXF_LINEAR);
    device.SetTexture(0, texture_.get());
    device.Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0xFF1A2032, 1, 0);
    if (device.BeginScene() >= 0) {
        // Two cards through each other: where they cross, the depth buffer decides.
        for (const double turn : {0.0, 1.5708}) {
            const D3DMATRIX world = Turned(seconds * 0.7 + 0.5 + turn, 0.5 * std::sin(seconds * 0.5));
            device.SetTransform(D3DTS_WORLD, &world);
            plane_.Draw(&device);
        }
        device.EndScene();
    }
    device.SetTexture(0, nullptr);
}

void SpacePage::ShowScene() {
    IDirect3DDevice9& device = *manager_.GetDirect3DDevice();
    IDirect3DSurface9* back = nullptr;
    device.GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, &back);
    const ComReference<IDirect3DSurface9> owned(back);
    D3DLOCKED_RECT locked = {};
    if (!back || device.GetRenderTargetData(back, copy_.get()) < 0 ||
        copy_->LockRect(&locked, nullptr, D3DLOCK_READONLY) < 0) {
        return;
    }
    {
        const PixelLock page(*surface_);
        for (int y = 0; page && y < scene_.Height(); ++y) {
            std::memcpy(page.At(scene_.left, scene_.top + y),
                        static_cast<const BYTE*>(locked.pBits) + static_cast<std::ptrdiff_t>(y) * locked.Pitch,
                        static_cast<std::size_t>(scene_.Width()) * 4);
        }
    }
    copy_->UnlockRect();
}

void SpacePage::DrawCard(double seconds) {
    const CPoint middle = flat_.CenterPoint();
    const int half = card_->GetWidth() / 2;
    const CRect place(middle.x - half, middle.y - half, middle.x + half, middle.y + half);
    CPoint corners[4];
    BuildScaledRotatedVertexList3d(place, middle, 0.5 * std::sin(seconds * 0.5), seconds * 0.7 + 0.5, 0, 1.2, corners);
    screen_->BltTexture(corners, *card_, nullptr, &flat_);
}

void SpacePage::DrawMoving(double seconds) {
    if (hasDevice_) {
        DrawScene(seconds);
        ShowScene();
    }
    DrawCard(seconds);
}

}   // namespace

std::unique_ptr<Page> MakeSpacePage(const PageSetup& setup) {
    auto page = std::make_unique<SpacePage>(setup);
    return page->DrawStill() ? std::move(page) : nullptr;
}

}   // namespace rastel::showcase
