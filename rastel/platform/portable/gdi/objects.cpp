#include "rastel/platform/portable/gdi/objects.h"

#include <array>
#include <mutex>
#include <shared_mutex>
#include <utility>

namespace rastel::platform {

namespace {

// A handle is an index and the generation of its slot, so that a handle to something deleted does not fit what took
// its place. Generations start at 1: small numbers and most stray pointers are no handles.
class HandleTable {
public:
    HGDIOBJ Add(const std::shared_ptr<GdiObject>& object) {
        if (!object) {
            return nullptr;
        }
        const std::unique_lock lock(mutex_);
        std::size_t index = firstFree_;
        if (index == kNone) {
            if (slots_.size() >= kMaxSlots) {
                return nullptr;
            }
            index = slots_.size();
            slots_.emplace_back();
        } else {
            firstFree_ = slots_[index].nextFree;
        }
        Slot& slot = slots_[index];
        slot.object = object;
        object->handle = reinterpret_cast<HGDIOBJ>((slot.generation << kIndexBits) | index);
        return object->handle;
    }

    std::shared_ptr<GdiObject> Find(HGDIOBJ handle) const {
        const std::shared_lock lock(mutex_);
        const std::size_t index = IndexOf(handle);
        return index == kNone ? nullptr : slots_[index].object;
    }

    std::shared_ptr<GdiObject> Remove(HGDIOBJ handle) {
        const std::unique_lock lock(mutex_);
        const std::size_t index = IndexOf(handle);
        if (index == kNone || slots_[index].object->stock) {
            return nullptr;
        }
        Slot& slot = slots_[index];
        std::shared_ptr<GdiObject> object = std::move(slot.object);
        slot.object.reset();
        slot.generation = (slot.generation + 1) & kMaxGeneration;
        if (slot.generation == 0) {
            slot.generation = 1;
        }
        slot.nextFree = firstFree_;
        firstFree_ = index;
        return object;   // its last reference goes outside the lock
    }

private:
    static constexpr unsigned kIndexBits = 20;
    static constexpr std::size_t kMaxSlots = std::size_t{1} << kIndexBits;
    static constexpr std::uintptr_t kMaxGeneration = ~std::uintptr_t{0} >> kIndexBits;
    static constexpr std::size_t kNone = ~std::size_t{0};

    struct Slot {
        std::shared_ptr<GdiObject> object;
        std::uintptr_t generation = 1;
        std::size_t nextFree = kNone;
    };

    std::size_t IndexOf(HGDIOBJ handle) const {
        const auto value = reinterpret_cast<std::uintptr_t>(handle);
        const std::size_t index = value & (kMaxSlots - 1);
        if (index >= slots_.size() || slots_[index].generation != value >> kIndexBits || !slots_[index].object) {
            return kNone;
        }
        return index;
    }

    mutable std::shared_mutex mutex_;
    std::vector<Slot> slots_;
    std::size_t firstFree_ = kNone;
};

// Never destroyed: hosts may release objects while the process ends.
HandleTable& Table() {
    static HandleTable* const table = new HandleTable;
    return *table;
}

std::shared_ptr<GdiObject> MakeBrush(UINT style, COLORREF color) {
    auto brush = std::make_shared<BrushObject>();
    brush->style = style;
    brush->color = color;
    return brush;
}

std::shared_ptr<GdiObject> MakePen(int style, COLORREF color) {
    auto pen = std::make_shared<PenObject>();
    pen->style = style;
    pen->color = color;
    return pen;
}

std::shared_ptr<GdiObject> MakeFont(LONG height, LONG weight, const wchar_t* faceName) {
    auto font = std::make_shared<FontObject>();
    font->font.lfHeight = height;
    font->font.lfWeight = weight;
    font->font.lfCharSet = DEFAULT_CHARSET;
    font->font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    for (int i = 0; faceName[i] != 0 && i < LF_FACESIZE - 1; ++i) {
        font->font.lfFaceName[i] = faceName[i];
    }
    return font;
}

constexpr int kLastStockObject = DEFAULT_GUI_FONT;

class StockObjects {
public:
    StockObjects() {
        objects_[WHITE_BRUSH] = MakeBrush(BS_SOLID, RGB(255, 255, 255));
        objects_[LTGRAY_BRUSH] = MakeBrush(BS_SOLID, RGB(192, 192, 192));
        objects_[GRAY_BRUSH] = MakeBrush(BS_SOLID, RGB(128, 128, 128));
        objects_[DKGRAY_BRUSH] = MakeBrush(BS_SOLID, RGB(64, 64, 64));
        objects_[BLACK_BRUSH] = MakeBrush(BS_SOLID, RGB(0, 0, 0));
        objects_[NULL_BRUSH] = MakeBrush(BS_NULL, RGB(0, 0, 0));
        objects_[WHITE_PEN] = MakePen(PS_SOLID, RGB(255, 255, 255));
        objects_[BLACK_PEN] = MakePen(PS_SOLID, RGB(0, 0, 0));
        objects_[NULL_PEN] = MakePen(PS_NULL, RGB(0, 0, 0));
        objects_[SYSTEM_FONT] = MakeFont(16, FW_BOLD, L"System");
        objects_[DEFAULT_GUI_FONT] = MakeFont(-11, FW_NORMAL, L"MS Shell Dlg");
        objects_[DEFAULT_PALETTE] = MakeDefaultPalette();

        bitmap_ = std::make_shared<BitmapObject>();
        bitmap_->width = 1;
        bitmap_->height = 1;
        bitmap_->pitch = 4;
        bitmap_->format = FormatOfDepth(1);
        bitmap_->pixels.Allocate(bitmap_->pitch);

        for (const std::shared_ptr<GdiObject>& object : objects_) {
            if (object) {
                object->stock = true;
                Table().Add(object);
            }
        }
        bitmap_->stock = true;
        Table().Add(bitmap_);
    }

    std::shared_ptr<GdiObject> At(int index) const {
        return index < 0 || index > kLastStockObject ? nullptr : objects_[static_cast<std::size_t>(index)];
    }
    std::shared_ptr<BitmapObject> Bitmap() const { return bitmap_; }

private:
    // The 20 fixed colours of indexed displays.
    static std::shared_ptr<GdiObject> MakeDefaultPalette() {
        auto palette = std::make_shared<PaletteObject>();
        static constexpr BYTE kColors[20][3] = {{0, 0, 0},       {128, 0, 0},     {0, 128, 0},     {128, 128, 0},
                                                {0, 0, 128},     {128, 0, 128},   {0, 128, 128},   {192, 192, 192},
                                                {192, 220, 192}, {166, 202, 240}, {255, 251, 240}, {160, 160, 164},
                                                {128, 128, 128}, {255, 0, 0},     {0, 255, 0},     {255, 255, 0},
                                                {0, 0, 255},     {255, 0, 255},   {0, 255, 255},   {255, 255, 255}};
        for (const auto& color : kColors) {
            palette->entries.push_back({color[0], color[1], color[2], 0});
        }
        return palette;
    }

    std::array<std::shared_ptr<GdiObject>, kLastStockObject + 1> objects_;
    std::shared_ptr<BitmapObject> bitmap_;
};

const StockObjects& Stock() {
    static const StockObjects* const stock = new StockObjects;
    return *stock;
}

}   // namespace

HGDIOBJ AddObject(const std::shared_ptr<GdiObject>& object) {
    return Table().Add(object);
}

std::shared_ptr<GdiObject> FindObject(HGDIOBJ handle) {
    return Table().Find(handle);
}

std::shared_ptr<GdiObject> RemoveObject(HGDIOBJ handle) {
    return Table().Remove(handle);
}

std::shared_ptr<GdiObject> StockObject(int index) {
    return Stock().At(index);
}

std::shared_ptr<BitmapObject> StockBitmap() {
    return Stock().Bitmap();
}

}   // namespace rastel::platform
