#include "tools/vorlen-monitor-viewer/picture.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor-viewer/gdi.h"
#include "tools/vorlen-monitor/failure.h"

#include <windows.h>

#include <wincodec.h>
#include <wrl/client.h>

#include <cstddef>
#include <vector>

namespace vorlen::viewer {

namespace {

using Microsoft::WRL::ComPtr;

constexpr UINT bytesPerPixel = 4;

struct Pixels {
    UINT width;
    UINT height;
    std::vector<BYTE> bytes; // blue, green, red and an unused byte, from the top left
};

class WindowContext {
public:
    // Of the window with its child windows.
    explicit WindowContext(HWND shown)
        : window(shown), context(GetDCEx(window, nullptr, DCX_CACHE)) {}
    ~WindowContext() { ReleaseDC(window, context); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;

    HDC get() const { return context; }

private:
    HWND window;
    HDC context;
};

class Apartment {
public:
    Apartment() : result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~Apartment() {
        if (SUCCEEDED(result)) {
            CoUninitialize();
        }
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    HRESULT result;
};

// WM_PRINT is not used: Wine draws neither child windows nor scroll bars for it.
Pixels pixelsOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = client.right;
    info.bmiHeader.biHeight = -client.bottom; // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 8 * bytesPerPixel;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    const WindowContext source(window);
    const MemoryContext target(CreateCompatibleDC(source.get()));
    const Bitmap bitmap(CreateDIBSection(target.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) {
        throw tool::Failure(tool::ExitCode::internal, "cannot make a bitmap");
    }
    const Selection selected(target.get(), bitmap.get());
    BitBlt(target.get(), 0, 0, client.right, client.bottom, source.get(), 0, 0, SRCCOPY);
    GdiFlush();
    const auto width = static_cast<UINT>(client.right);
    const auto height = static_cast<UINT>(client.bottom);
    const auto* const first = static_cast<const BYTE*>(bits);
    return {width, height, {first, first + std::size_t{bytesPerPixel} * width * height}};
}

HRESULT encode(IWICImagingFactory& factory, Pixels& pixels, const std::wstring& file) {
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    ComPtr<IWICBitmap> bitmap;
    const UINT stride = bytesPerPixel * pixels.width;
    HRESULT result = factory.CreateStream(&stream);
    const auto next = [&](auto step) {
        if (SUCCEEDED(result)) {
            result = step();
        }
    };
    next([&] { return stream->InitializeFromFilename(file.c_str(), GENERIC_WRITE); });
    const bool isOpened = SUCCEEDED(result);
    next([&] { return factory.CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder); });
    next([&] { return encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache); });
    next([&] { return encoder->CreateNewFrame(&frame, nullptr); });
    next([&] { return frame->Initialize(nullptr); });
    next([&] {
        return factory.CreateBitmapFromMemory(
            pixels.width, pixels.height, GUID_WICPixelFormat32bppBGR, stride,
            static_cast<UINT>(pixels.bytes.size()), pixels.bytes.data(), &bitmap);
    });
    // The encoder converts the pixels to those of its format.
    next([&] { return frame->WriteSource(bitmap.Get(), nullptr); });
    next([&] { return frame->Commit(); });
    next([&] { return encoder->Commit(); });
    if (FAILED(result) && isOpened) { // no part of a picture stays
        bitmap.Reset();
        frame.Reset();
        encoder.Reset();
        stream.Reset();
        DeleteFileW(file.c_str());
    }
    return result;
}

} // namespace

void writePicture(HWND window, const std::string& fileName) {
    Pixels pixels = pixelsOf(window);
    const Apartment apartment;
    ComPtr<IWICImagingFactory> factory;
    HRESULT result = CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_PPV_ARGS(&factory));
    if (SUCCEEDED(result)) {
        result = encode(*factory.Get(), pixels, toUtf16Lossy(fileName));
    }
    if (FAILED(result)) {
        throw tool::Failure(tool::ExitCode::output,
                            "cannot write \"" + fileName +
                                "\": " + tool::systemError(static_cast<DWORD>(result)) +
                                "; name a file in a folder that can be written");
    }
}

} // namespace vorlen::viewer
