// What all stores of pixels share: size, clipping of a blit, the generic copy and the generic stretch.
//
// A store is used by one thread at a time: a second LockData or GetDC is refused, it does not wait. Reference
// counts and GetSurfacesAllocated may be used from any thread.
#pragma once

#include "rastel/platform/framework.h"
#include "rastel/platform/gdi.h"
#include "rastel/surface/ref_count_object.h"

class RASTEL_API CSurfaceBase : public CRefCountObject {
public:
    ~CSurfaceBase() override;

    int GetWidth() const { return m_Width; }     // pixels
    int GetHeight() const { return m_Height; }   // pixels
    int GetPitch() const { return m_Pitch; }     // bytes from one row to the next
    CRect GetRect() const { return CRect(0, 0, m_Width, m_Height); }

    // For the host's own exclusion; the blits don't hold it. Re-entrant on one thread.
    CCriticalSection* GetSyncObject() { return &m_SyncObject; }

    static LONG GetSurfacesAllocated() { return m_SurfacesAllocated; }   // live stores of every kind
    static LONG GetSurfaceMenory() { return m_SurfacesMemory; }   // bytes of their pixels, row padding not counted

    static std::atomic<LONG> m_SurfacesAllocated;
    static std::atomic<LONG> m_SurfacesMemory;

protected:
    CSurfaceBase();

    // The order of the virtual operations is binary interface.

    // Fits a blit to this destination and to `src`. Out: rcDst and rcSrc. (x, y) is where the source rectangle's
    // corner is to land; pSrcRect and pClip may be null. Returns 0 when a size comes out negative, else 1; a size of
    // 0 is possible. Callers take the position from rcDst's corner and the size from rcSrc.
    virtual int ClipRects(CRect& rcDst, CRect& rcSrc, int x, int y, CSurfaceBase& src, const CRect* pSrcRect,
                          const CRect* pClip);

    // Copies the rows of rcSrc, already clipped, to (x, y), all bytes of a pixel. Stores of different pixel sizes
    // give 0. Source and destination that share memory move row by row from the top.
    virtual int InternalCopyBlt(int x, int y, CSurfaceBase& src, const CRect& rcSrc);

    // Stretches through device contexts. pClip may be null.
    virtual int InternalStretchBlt(CRect& rcDst, CSurfaceBase& src, CRect& rcSrc, CRect* pClip);

public:
    virtual HDC GetDC() = 0;   // null: refused. Give it back with ReleaseDC.
    virtual void ReleaseDC(HDC hDC) = 0;
    virtual unsigned char* LockData() = 0;   // the top row's first byte, or null. Owes one UnlockData.
    virtual void UnlockData() = 0;
    virtual BITMAPINFO* GetBitmapInfo() = 0;   // the caller's, to be freed with array delete
    virtual int GetBytesPrPixel() = 0;         // 4 for colour, 1 for planes

protected:
    int m_Width = 0;
    int m_Height = 0;
    int m_Pitch = 0;
    CCriticalSection m_SyncObject;
};
