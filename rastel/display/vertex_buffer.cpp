#include "rastel/display/vertex_buffer.h"

#include <cmath>
#include <cstdint>

#include "rastel/platform/com_reference.h"

namespace {

struct Vertex {
    float x, y, z;
    DWORD diffuse;
    float tu, tv;
};
constexpr DWORD vertexFormat = D3DFVF_XYZ | D3DFVF_DIFFUSE | D3DFVF_TEX1;
static_assert(sizeof(Vertex) == 24 && vertexFormat == 0x142);

// A side of the plane: where it points, and how far.
struct Side {
    D3DXVECTOR3 direction;
    float length;
};

// Every step is rounded to float.
Side SideOf(const D3DXVECTOR3& from, const D3DXVECTOR3& to) {
    const float x = to.x - from.x, y = to.y - from.y, z = to.z - from.z;
    const float squares = x * x + y * y + z * z;
    const float length = std::sqrt(squares);
    const float scale = 1.0f / length;
    return {D3DXVECTOR3(x * scale, y * scale, z * scale), length};
}

D3DXVECTOR3 Along(const Side& side, float distance) {
    return D3DXVECTOR3(distance * side.direction.x, distance * side.direction.y, distance * side.direction.z);
}

// Products of sizes wrap like the counts that they make: what no plane has, the device refuses.
int Product(int first, int second, int third = 1) {
    return static_cast<int>(static_cast<std::uint32_t>(first) * static_cast<std::uint32_t>(second) *
                            static_cast<std::uint32_t>(third));
}

int OneMore(int steps) {
    return static_cast<int>(static_cast<std::uint32_t>(steps) + 1);
}

void FillVertices(Vertex* vertex, const D3DXVECTOR3& origin, const Side& u, const Side& v, int vSteps, int uSteps,
                  float uMax, float vMax, DWORD diffuse) {
    for (int i = 0; i <= vSteps; ++i) {
        // The product is exact in double, so that only the quotient is rounded.
        const auto r = static_cast<float>(static_cast<double>(i) * v.length / vSteps);
        const D3DXVECTOR3 row = Along(v, r);
        const float tv = static_cast<float>(static_cast<double>(i) / vSteps) * vMax;
        for (int j = 0; j <= uSteps; ++j) {
            const auto t = static_cast<float>(static_cast<double>(j) / uSteps);
            const D3DXVECTOR3 column = Along(u, t * u.length);
            *vertex++ = {(column.x + origin.x) + row.x,
                         (column.y + origin.y) + row.y,
                         (column.z + origin.z) + row.z,
                         diffuse,
                         t * uMax,
                         tv};
        }
    }
}

// Two triangles a quad, which share the diagonal from the top right to the bottom left.
void FillIndices(WORD* index, int vSteps, int uSteps) {
    const int width = uSteps + 1;
    for (int i = 0; i < vSteps; ++i) {
        for (int j = 0; j < uSteps; ++j) {
            const int a = i * width + j;
            for (const int corner : {a, a + 1, a + width, a + width, a + 1, a + width + 1}) {
                *index++ = static_cast<WORD>(corner);
            }
        }
    }
}

// Whether the counts are those that the loops go through: others wrapped, and the buffers are too small for the loops.
bool AreCountsExact(int vSteps, int uSteps, int vertices, int indices) {
    const std::int64_t points = (std::int64_t{vSteps} + 1) * (std::int64_t{uSteps} + 1);
    const std::int64_t quads = std::int64_t{vSteps} * uSteps;
    return vSteps >= 0 && uSteps >= 0 && points <= INT32_MAX / 24 && points == vertices && quads <= INT32_MAX / 12 &&
           quads * 6 == indices;
}

}   // namespace

CVertexBuffer::CVertexBuffer() = default;

CVertexBuffer::~CVertexBuffer() {
    CVertexBuffer::CleanUp();
}

void CVertexBuffer::CleanUp() {
    rastel::platform::Drop(m_pVertexBuffer);
    rastel::platform::Drop(m_pIndexBuffer);
    m_VerticesCount = 0;
    m_IndeciesCount = 0;
}

bool CVertexBuffer::CreateBuffers(IDirect3DDevice9& device, int vSteps, int uSteps) {
    m_VerticesCount = Product(OneMore(vSteps), OneMore(uSteps));
    if (device.CreateVertexBuffer(static_cast<UINT>(Product(m_VerticesCount, sizeof(Vertex))), 0, vertexFormat,
                                  D3DPOOL_DEFAULT, &m_pVertexBuffer, nullptr) < 0) {
        return false;
    }
    m_IndeciesCount = Product(vSteps, uSteps, 6);
    return device.CreateIndexBuffer(static_cast<UINT>(Product(vSteps, uSteps, 12)), 0, D3DFMT_INDEX16, D3DPOOL_DEFAULT,
                                    &m_pIndexBuffer, nullptr) >= 0;
}

int CVertexBuffer::CreatePlane(IDirect3DDevice9* pDevice, D3DXVECTOR3 origin, D3DXVECTOR3 uEnd, D3DXVECTOR3 vEnd,
                               int vSteps, int uSteps, float uMax, float vMax, DWORD diffuse) {
    void* vertices = nullptr;
    void* indices = nullptr;
    if (!pDevice || !CreateBuffers(*pDevice, vSteps, uSteps) ||
        m_pVertexBuffer->Lock(0, static_cast<UINT>(Product(m_VerticesCount, sizeof(Vertex))), &vertices, 0) < 0) {
        CleanUp();
        return 0;
    }
    if (m_pIndexBuffer->Lock(0, 0, &indices, 0) < 0) {
        m_pVertexBuffer->Unlock();
        CleanUp();
        return 0;
    }
    const Side u = SideOf(origin, uEnd), v = SideOf(origin, vEnd);
    if (AreCountsExact(vSteps, uSteps, m_VerticesCount, m_IndeciesCount)) {
        FillVertices(static_cast<Vertex*>(vertices), origin, u, v, vSteps, uSteps, uMax, vMax, diffuse);
        FillIndices(static_cast<WORD*>(indices), vSteps, uSteps);
    }
    m_pIndexBuffer->Unlock();
    m_pVertexBuffer->Unlock();
    return 1;
}

void CVertexBuffer::Draw(IDirect3DDevice9* pDevice) {
    if (!pDevice || !m_pVertexBuffer || !m_pIndexBuffer) {
        return;
    }
    pDevice->SetStreamSource(0, m_pVertexBuffer, 0, sizeof(Vertex));
    pDevice->SetFVF(vertexFormat);
    pDevice->SetIndices(m_pIndexBuffer);
    pDevice->DrawIndexedPrimitive(D3DPT_TRIANGLELIST, 0, 0, static_cast<UINT>(m_VerticesCount), 0,
                                  static_cast<UINT>(m_IndeciesCount / 3));
}
