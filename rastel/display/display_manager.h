// The one object through which a host reaches the display: it makes every kind of surface, knows the display's mode
// and keeps the measured timings. The host constructs it, before anything else of the library, and destroys it last.
//
// No lock: one thread at a time. Failure is a returned 0 or null, but for the second manager's constructor.
#pragma once

#include "rastel/display/direct3d_wrapper.h"
#include "rastel/platform/d3d9.h"
#include "rastel/platform/framework.h"
#include "rastel/platform/registry.h"
#include "rastel/platform/types.h"

class CAdvSurface;
class CAlphaChannel;
class CPrimarySurface;
class CSurface;
struct IDirectDraw2;

class RASTEL_API CDisplayManager {
public:
    CDisplayManager();   // throws the integer 0 while another manager lives
    CDisplayManager(const CDisplayManager&) = delete;
    CDisplayManager& operator=(const CDisplayManager&) = delete;

protected:
    // The order of the virtual operations is binary interface.
    virtual int InitializeDirectDraw();   // 1: nothing more to do; 0: the machine has no DirectDraw

public:
    virtual ~CDisplayManager();
    virtual int Initialize(HWND hWnd);   // always 1; a machine without DirectDraw goes on without
    virtual int Initialize3D(HWND hWnd, int width, int height);
    virtual int Destroy();   // drops DirectDraw and Direct3D; surfaces are the host's to release. Always 1.
    virtual int SetMode(int width, int height, int bits);
    virtual int CanDoMode(int width, int height, int bits);
    virtual int RestoreMode();

    // The factories. The result carries one reference, the caller's, and must be released before the manager goes.
    virtual CPrimarySurface* CreatePrimarySurface();   // measures the display, or reads what was measured before
    virtual CSurface* CreateSurface(int width, int height);
    virtual CAlphaChannel* CreateAlphaChannel(int width, int height);
    virtual CAdvSurface* CreateAdvSurface(int width, int height, int withAlpha);

    virtual void WaitForVerticalBlank();
    virtual void EnableDirectX(int enable);   // read by the next Initialize
    virtual int IsDepthFormatExisting(D3DFORMAT depthFormat, D3DFORMAT adapterFormat);
    virtual D3DFORMAT GetAutoDepthStencilFormat(D3DFORMAT adapterFormat);
    virtual IDirect3DDevice9* Create3dDevice(HWND hWnd, int width, int height, D3DSWAPEFFECT swapEffect);

    // The profile store: one key for each display mode, in the registry of the current user.
    virtual CString GetDisplayIdString();                // "name WxH bits (Hz)"
    virtual HKEY GetProfileKey();                        // opened or made; the caller closes it
    virtual long long GetProfile(const wchar_t* name);   // -1: not stored
    virtual void SetProfile(const wchar_t* name, long long value);

    IDirectDraw2* GetDirectDraw() { return m_pDirectDraw; }
    IDirect3D9* GetDirect3D() { return m_pDirect3D; }
    IDirect3DDevice9* GetDirect3DDevice() { return m_pDirect3DDevice; }

    int GetBitsPrPixel();                     // of the display when first asked; a later mode doesn't change it
    static long long GetPerformanceTimer();   // ticks of the performance counter

protected:
    CDirect3DWrapper m_direct3DWrapper;
    int m_bEnableDirectX = 1;
    HWND m_hWnd = nullptr;
    IDirectDraw2* m_pDirectDraw = nullptr;
    int m_nBitsPrPixel = 0;
    IDirect3D9* m_pDirect3D = nullptr;
    IDirect3DDevice9* m_pDirect3DDevice = nullptr;
};

RASTEL_API CDisplayManager* GetDisplayManager();   // the live manager, or null
