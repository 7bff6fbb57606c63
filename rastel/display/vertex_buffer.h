// A flat rectangle in space as a mesh of triangles in buffers of a Direct3D 9 device, drawn in one call.
//
// The host owns the device, its textures, transforms and states; this owns the two buffers. A vertex takes 24 bytes:
// position, diffuse colour, texture co-ordinates. Indices have 16 bits, so a mesh has at most 65536 vertices; nothing
// checks that.
#pragma once

#include "rastel/platform/d3d9.h"

class RASTEL_API CVertexBuffer {
public:
    CVertexBuffer();
    CVertexBuffer(const CVertexBuffer&) = delete;
    CVertexBuffer& operator=(const CVertexBuffer&) = delete;

    // The order of the virtual operations is binary interface.
    virtual ~CVertexBuffer();
    virtual void CleanUp();   // gives the buffers back; any time, and again

    // 1, or 0 with the object empty. `origin` is a corner, `uEnd` the corner along the columns, of which there are
    // `uSteps`, `vEnd` the one along the rows; the two sides need not be square to each other. (uMax, vMax) is the
    // texture at the far corner. Clean up before making another plane: what was there is not given back here.
    virtual int CreatePlane(IDirect3DDevice9* pDevice, D3DXVECTOR3 origin, D3DXVECTOR3 uEnd, D3DXVECTOR3 vEnd,
                            int vSteps, int uSteps, float uMax, float vMax, DWORD diffuse);   // 0xAARRGGBB

    // Inside the host's scene. Nothing for a null device, or while there is no plane.
    virtual void Draw(IDirect3DDevice9* pDevice);

    IDirect3DVertexBuffer9* GetVertexBuffer() { return m_pVertexBuffer; }   // no new reference
    IDirect3DIndexBuffer9* GetIndexBuffer() { return m_pIndexBuffer; }
    int GetVerticesCount() { return m_VerticesCount; }
    int GetIndeciesCount() { return m_IndeciesCount; }   // three for each triangle

protected:
    IDirect3DVertexBuffer9* m_pVertexBuffer = nullptr;
    IDirect3DIndexBuffer9* m_pIndexBuffer = nullptr;
    int m_VerticesCount = 0;
    int m_IndeciesCount = 0;

private:
    bool CreateBuffers(IDirect3DDevice9& device, int vSteps, int uSteps);
};
