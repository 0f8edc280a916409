#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

// Owners of what GDI makes.
namespace vorlen::viewer {

struct DeleteGdiObject {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteGdiObject>;

struct DeleteContext {
    void operator()(HDC context) const { DeleteDC(context); }
};
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

// Selects an object into a device context for a scope.
class Selection {
public:
    Selection(HDC target, HGDIOBJ object) : context(target), before(SelectObject(target, object)) {}
    ~Selection() { SelectObject(context, before); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

private:
    HDC context;
    HGDIOBJ before;
};

} // namespace vorlen::viewer
