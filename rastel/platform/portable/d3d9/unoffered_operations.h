// What the software device lacks: shaders, state blocks, cube and volume textures, lights, patches, queries, cursors.
#pragma once

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/d3d9.h"

namespace rastel::platform::d3d {

class UnofferedOperations : public IDirect3DDevice9 {
public:
    HRESULT SetCursorProperties(UINT, UINT, IDirect3DSurface9*) override { return D3DERR_INVALIDCALL; }
    void SetCursorPosition(int, int, DWORD) override {}
    BOOL ShowCursor(BOOL) override { return FALSE; }
    HRESULT CreateAdditionalSwapChain(D3DPRESENT_PARAMETERS*, IDirect3DSwapChain9** object) override {
        return Refused(object);
    }
    HRESULT GetRasterStatus(UINT, D3DRASTER_STATUS*) override { return D3DERR_INVALIDCALL; }
    HRESULT SetDialogBoxMode(BOOL) override { return D3D_OK; }
    void SetGammaRamp(UINT, DWORD, const D3DGAMMARAMP*) override {}
    void GetGammaRamp(UINT, D3DGAMMARAMP*) override {}
    HRESULT CreateVolumeTexture(UINT, UINT, UINT, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DVolumeTexture9** object,
                                HANDLE*) override {
        return Refused(object);
    }
    HRESULT CreateCubeTexture(UINT, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DCubeTexture9** object, HANDLE*) override {
        return Refused(object);
    }
    HRESULT GetFrontBufferData(UINT, IDirect3DSurface9*) override { return D3DERR_INVALIDCALL; }
    HRESULT SetLight(DWORD, const D3DLIGHT9*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetLight(DWORD, D3DLIGHT9*) override { return D3DERR_INVALIDCALL; }
    HRESULT LightEnable(DWORD, BOOL) override { return D3DERR_INVALIDCALL; }
    HRESULT GetLightEnable(DWORD, BOOL*) override { return D3DERR_INVALIDCALL; }
    HRESULT SetClipPlane(DWORD, const float*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetClipPlane(DWORD, float*) override { return D3DERR_INVALIDCALL; }
    HRESULT CreateStateBlock(DWORD, IDirect3DStateBlock9** object) override { return Refused(object); }
    HRESULT BeginStateBlock() override { return D3DERR_INVALIDCALL; }
    HRESULT EndStateBlock(IDirect3DStateBlock9** object) override { return Refused(object); }
    HRESULT SetClipStatus(const D3DCLIPSTATUS9*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetClipStatus(D3DCLIPSTATUS9*) override { return D3DERR_INVALIDCALL; }
    HRESULT ValidateDevice(DWORD*) override { return D3D_OK; }
    HRESULT SetPaletteEntries(UINT, const PALETTEENTRY*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetPaletteEntries(UINT, PALETTEENTRY*) override { return D3DERR_INVALIDCALL; }
    HRESULT SetCurrentTexturePalette(UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetCurrentTexturePalette(UINT*) override { return D3DERR_INVALIDCALL; }
    HRESULT SetSoftwareVertexProcessing(BOOL) override { return D3D_OK; }
    BOOL GetSoftwareVertexProcessing() override { return TRUE; }
    HRESULT SetNPatchMode(float) override { return D3D_OK; }
    float GetNPatchMode() override { return 0; }
    HRESULT ProcessVertices(UINT, UINT, UINT, IDirect3DVertexBuffer9*, IDirect3DVertexDeclaration9*, DWORD) override {
        return D3DERR_INVALIDCALL;
    }
    HRESULT CreateVertexDeclaration(const D3DVERTEXELEMENT9*, IDirect3DVertexDeclaration9** object) override {
        return Refused(object);
    }
    HRESULT SetVertexDeclaration(IDirect3DVertexDeclaration9*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetVertexDeclaration(IDirect3DVertexDeclaration9** object) override { return Refused(object); }
    HRESULT CreateVertexShader(const DWORD*, IDirect3DVertexShader9** object) override { return Refused(object); }
    HRESULT SetVertexShader(IDirect3DVertexShader9* shader) override { return shader ? D3DERR_INVALIDCALL : D3D_OK; }
    HRESULT GetVertexShader(IDirect3DVertexShader9** object) override { return Refused(object); }
    HRESULT SetVertexShaderConstantF(UINT, const float*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetVertexShaderConstantF(UINT, float*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT SetVertexShaderConstantI(UINT, const int*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetVertexShaderConstantI(UINT, int*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT SetVertexShaderConstantB(UINT, const BOOL*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetVertexShaderConstantB(UINT, BOOL*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT SetStreamSourceFreq(UINT, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetStreamSourceFreq(UINT, UINT*) override { return D3DERR_INVALIDCALL; }
    HRESULT CreatePixelShader(const DWORD*, IDirect3DPixelShader9** object) override { return Refused(object); }
    HRESULT SetPixelShader(IDirect3DPixelShader9* shader) override { return shader ? D3DERR_INVALIDCALL : D3D_OK; }
    HRESULT GetPixelShader(IDirect3DPixelShader9** object) override { return Refused(object); }
    HRESULT SetPixelShaderConstantF(UINT, const float*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetPixelShaderConstantF(UINT, float*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT SetPixelShaderConstantI(UINT, const int*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetPixelShaderConstantI(UINT, int*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT SetPixelShaderConstantB(UINT, const BOOL*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT GetPixelShaderConstantB(UINT, BOOL*, UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT DrawRectPatch(UINT, const float*, const D3DRECTPATCH_INFO*) override { return D3DERR_INVALIDCALL; }
    HRESULT DrawTriPatch(UINT, const float*, const D3DTRIPATCH_INFO*) override { return D3DERR_INVALIDCALL; }
    HRESULT DeletePatch(UINT) override { return D3DERR_INVALIDCALL; }
    HRESULT CreateQuery(DWORD, IDirect3DQuery9** object) override { return Refused(object); }

private:
    template <class Object>
    static HRESULT Refused(Object** object) {
        if (object) {
            *object = nullptr;
        }
        return D3DERR_INVALIDCALL;
    }
};

}   // namespace rastel::platform::d3d
