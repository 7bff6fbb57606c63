// From vertices to triangles.
#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "rastel/platform/portable/d3d9/device.h"

namespace rastel::platform::d3d {

namespace {

// Where a vertex of fixed functions has what. No position: not a format that is drawn.
struct VertexLayout {
    explicit VertexLayout(DWORD fvf) {
        const DWORD position = fvf & D3DFVF_POSITION_MASK;
        if (position != D3DFVF_XYZ && position != D3DFVF_XYZRHW) {
            return;
        }
        isOnScreen = position == D3DFVF_XYZRHW;
        bytes = isOnScreen ? 16 : 12;
        bytes += fvf & D3DFVF_NORMAL ? 12 : 0;
        bytes += fvf & D3DFVF_PSIZE ? 4 : 0;
        if (fvf & D3DFVF_DIFFUSE) {
            diffuse = bytes;
            bytes += 4;
        }
        bytes += fvf & D3DFVF_SPECULAR ? 4 : 0;
        const UINT sets = (fvf & D3DFVF_TEXCOUNT_MASK) >> 8;
        constexpr UINT mostSets = 8;
        if (sets > mostSets) {
            bytes = 0;
            return;
        }
        constexpr UINT numbers[] = {2, 3, 4, 1};   // of a set, by the two bits that the format has for each
        for (UINT set = 0; set < sets; ++set) {
            const UINT count = numbers[fvf >> (16 + 2 * set) & 3];
            if (set == 0) {
                texture = bytes;
                textureBytes = std::min(count, 2u) * 4;
            }
            bytes += count * 4;
        }
    }

    bool isOnScreen = false;
    UINT bytes = 0;
    UINT diffuse = 0;   // 0: none
    UINT texture = 0, textureBytes = 0;
};

UINT CornersOf(D3DPRIMITIVETYPE type, UINT triangles) {
    return type == D3DPT_TRIANGLELIST ? triangles * 3 : triangles + 2;
}

}   // namespace

struct Device::Vertices {
    const BYTE* bytes;
    std::uint64_t count;   // that are there
    UINT stride;
    std::int64_t base;   // added to every index
};

struct Device::Indices {
    const BYTE* bytes;   // null: corners are vertices in their order
    std::uint64_t first, count;
    bool isWide;

    std::uint32_t At(std::uint64_t corner) const {
        if (!bytes) {
            return static_cast<std::uint32_t>(corner);
        }
        if (isWide) {
            DWORD index;
            std::memcpy(&index, bytes + (first + corner) * sizeof(index), sizeof(index));
            return index;
        }
        WORD index;
        std::memcpy(&index, bytes + (first + corner) * sizeof(index), sizeof(index));
        return index;
    }
};

DrawState Device::CurrentState() {
    DrawState state;
    state.target = target_ ? target_.get() : chain_->buffers.front().get();
    state.depth = depth_.get();
    state.viewport = viewport_;
    RECT& limit = state.limit;
    limit = {static_cast<LONG>(viewport_.X), static_cast<LONG>(viewport_.Y),
             static_cast<LONG>(viewport_.X + viewport_.Width), static_cast<LONG>(viewport_.Y + viewport_.Height)};
    const auto cut = [&](const RECT& by) {
        limit = {std::max(limit.left, by.left), std::max(limit.top, by.top), std::min(limit.right, by.right),
                 std::min(limit.bottom, by.bottom)};
    };
    cut(state.target->Whole());
    if (state.depth) {
        cut(state.depth->Whole());
    }
    if (RenderState(D3DRS_SCISSORTESTENABLE)) {
        cut(scissor_);
    }
    state.cull = RenderState(D3DRS_CULLMODE);
    state.isFlat = RenderState(D3DRS_SHADEMODE) == D3DSHADE_FLAT;
    state.testsDepth = RenderState(D3DRS_ZENABLE) != 0 && depth_;
    state.writesDepth = RenderState(D3DRS_ZWRITEENABLE) != 0;
    state.depthFunction = RenderState(D3DRS_ZFUNC);
    state.testsAlpha = RenderState(D3DRS_ALPHATESTENABLE) != 0;
    state.alphaFunction = RenderState(D3DRS_ALPHAFUNC);
    state.alphaReference = RenderState(D3DRS_ALPHAREF) & 0xFF;
    state.blends = RenderState(D3DRS_ALPHABLENDENABLE) != 0;
    state.sourceBlend = RenderState(D3DRS_SRCBLEND);
    state.targetBlend = RenderState(D3DRS_DESTBLEND);
    state.factor = ToColor4(RenderState(D3DRS_TEXTUREFACTOR));
    const auto& stage = stageStates_[0];
    state.stage = {stage[D3DTSS_COLOROP], stage[D3DTSS_COLORARG1], stage[D3DTSS_COLORARG2],
                   stage[D3DTSS_ALPHAOP], stage[D3DTSS_ALPHAARG1], stage[D3DTSS_ALPHAARG2]};
    const auto& sampler = samplerStates_[0];
    state.sampler = {sampler[D3DSAMP_ADDRESSU], sampler[D3DSAMP_ADDRESSV], sampler[D3DSAMP_MAGFILTER],
                     sampler[D3DSAMP_MINFILTER], sampler[D3DSAMP_MIPFILTER]};
    state.texture = textures_[0];
    return state;
}

ClipVertex Device::ReadVertex(const Vertices& vertices, std::int64_t index, const D3DMATRIX& toClip) {
    const VertexLayout layout(fvf_);
    const BYTE* const bytes = vertices.bytes + static_cast<std::size_t>(index) * vertices.stride;
    float p[4] = {0, 0, 0, 1};
    std::memcpy(p, bytes, layout.isOnScreen ? 16 : 12);
    ClipVertex made{};
    if (layout.isOnScreen) {
        // Back to where the view would have it, so that one way of clipping serves both kinds.
        const double w = p[3] > 0 ? 1.0 / p[3] : 1;
        const auto unit = [&](double value, DWORD first, DWORD length) {
            return length == 0 ? 0 : ((value - first) * 2 / length - 1) * w;
        };
        made.x = unit(p[0], viewport_.X, viewport_.Width);
        made.y = -unit(p[1], viewport_.Y, viewport_.Height);
        const double range = double{viewport_.MaxZ} - viewport_.MinZ;
        made.z = std::clamp(range != 0 ? (p[2] - viewport_.MinZ) / range : 0.0, 0.0, 1.0) * w;
        made.w = w;
    } else {
        double out[4];
        for (int column = 0; column < 4; ++column) {
            out[column] = double{p[0]} * toClip.m[0][column] + double{p[1]} * toClip.m[1][column] +
                          double{p[2]} * toClip.m[2][column] + toClip.m[3][column];
        }
        made.x = out[0];
        made.y = out[1];
        made.z = out[2];
        made.w = out[3];
    }
    DWORD diffuse = 0xFFFFFFFF;
    if (layout.diffuse != 0) {
        std::memcpy(&diffuse, bytes + layout.diffuse, sizeof(diffuse));
    }
    made.color = ToColor4(diffuse);
    if (!layout.isOnScreen && RenderState(D3DRS_LIGHTING)) {
        // There are no lights but the one that is everywhere.
        const Color4 light = ToColor4(RenderState(D3DRS_AMBIENT));
        const D3DCOLORVALUE &glow = material_.Emissive, &back = material_.Ambient;
        const auto shine = [](float own, float thrown) { return std::clamp(own + thrown, 0.0f, 1.0f); };
        made.color = {shine(glow.r, light[0] * back.r), shine(glow.g, light[1] * back.g),
                      shine(glow.b, light[2] * back.b), made.color[3]};
    }
    float uv[2] = {};
    std::memcpy(uv, bytes + layout.texture, layout.textureBytes);
    made.u = uv[0];
    made.v = uv[1];
    return made;
}

HRESULT Device::Draw(const char* call, D3DPRIMITIVETYPE type, const Vertices& vertices, const Indices& indices,
                     UINT count) try {
    const VertexLayout layout(fvf_);
    if (ShouldFail(call) || !isInScene_ || type < D3DPT_TRIANGLELIST || type > D3DPT_TRIANGLEFAN || count == 0 ||
        count > mostTriangles || layout.bytes == 0 || vertices.stride < layout.bytes || !vertices.bytes) {
        return D3DERR_INVALIDCALL;
    }
    const UINT corners = CornersOf(type, count);
    if (corners > indices.count) {
        return D3DERR_INVALIDCALL;
    }
    for (UINT i = 0; i < corners; ++i) {
        const std::int64_t index = vertices.base + indices.At(i);
        if (index < 0 || static_cast<std::uint64_t>(index) >= vertices.count) {
            return D3DERR_INVALIDCALL;
        }
    }
    D3DMATRIX world, view, projection;
    GetTransform(D3DTS_WORLD, &world);
    GetTransform(D3DTS_VIEW, &view);
    GetTransform(D3DTS_PROJECTION, &projection);
    const D3DMATRIX toClip = Product(Product(world, view), projection);
    const DrawState state = CurrentState();
    const auto vertex = [&](UINT corner) { return ReadVertex(vertices, vertices.base + indices.At(corner), toClip); };
    for (UINT i = 0; i < count; ++i) {
        UINT at[3];
        if (type == D3DPT_TRIANGLELIST) {
            std::copy_n(std::initializer_list<UINT>{i * 3, i * 3 + 1, i * 3 + 2}.begin(), 3, at);
        } else if (type == D3DPT_TRIANGLEFAN) {
            std::copy_n(std::initializer_list<UINT>{0, i + 1, i + 2}.begin(), 3, at);
        } else {
            const UINT turn = i % 2;   // every second one has its corners the other way round
            std::copy_n(std::initializer_list<UINT>{i, i + 1 + turn, i + 2 - turn}.begin(), 3, at);
        }
        DrawTriangle(state, vertex(at[0]), vertex(at[1]), vertex(at[2]));
    }
    return D3D_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Device::DrawPrimitive(D3DPRIMITIVETYPE type, UINT firstVertex, UINT count) {
    const std::lock_guard lock(mutex_);
    if (!vertices_ || vertexStride_ == 0 || vertexOffset_ > vertices_->bytes.size()) {
        return D3DERR_INVALIDCALL;
    }
    const Vertices vertices{vertices_->bytes.data() + vertexOffset_,
                            (vertices_->bytes.size() - vertexOffset_) / vertexStride_, vertexStride_, firstVertex};
    return Draw("DrawPrimitive", type, vertices, {nullptr, 0, UINT64_MAX, false}, count);
}

HRESULT Device::DrawIndexedPrimitive(D3DPRIMITIVETYPE type, INT baseVertex, UINT, UINT, UINT firstIndex, UINT count) {
    const std::lock_guard lock(mutex_);
    if (!vertices_ || !indices_ || vertexStride_ == 0 || vertexOffset_ > vertices_->bytes.size()) {
        return D3DERR_INVALIDCALL;
    }
    const bool isWide = indices_->format == D3DFMT_INDEX32;
    const std::uint64_t available = indices_->bytes.size() / (isWide ? 4 : 2);
    const Vertices vertices{vertices_->bytes.data() + vertexOffset_,
                            (vertices_->bytes.size() - vertexOffset_) / vertexStride_, vertexStride_, baseVertex};
    return Draw("DrawIndexedPrimitive", type, vertices,
                {indices_->bytes.data(), firstIndex, available > firstIndex ? available - firstIndex : 0, isWide},
                count);
}

// How many vertices the host has is its own word.
HRESULT Device::DrawPrimitiveUP(D3DPRIMITIVETYPE type, UINT count, const void* vertices, UINT stride) {
    const std::lock_guard lock(mutex_);
    return Draw("DrawPrimitiveUP", type, {static_cast<const BYTE*>(vertices), UINT64_MAX, stride, 0},
                {nullptr, 0, UINT64_MAX, false}, count);
}

HRESULT Device::DrawIndexedPrimitiveUP(D3DPRIMITIVETYPE type, UINT leastIndex, UINT vertexCount, UINT count,
                                       const void* indices, D3DFORMAT indexFormat, const void* vertices, UINT stride) {
    const std::lock_guard lock(mutex_);
    if (!indices || (indexFormat != D3DFMT_INDEX16 && indexFormat != D3DFMT_INDEX32)) {
        return D3DERR_INVALIDCALL;
    }
    return Draw("DrawIndexedPrimitiveUP", type,
                {static_cast<const BYTE*>(vertices), std::uint64_t{leastIndex} + vertexCount, stride, 0},
                {static_cast<const BYTE*>(indices), 0, UINT64_MAX, indexFormat == D3DFMT_INDEX32}, count);
}

}   // namespace rastel::platform::d3d
