#pragma once

#include <windows.h>

#include <ole2.h>

#include <functional>
#include <string>

namespace vextrel::target {

enum class ReadAt { Entry, Drop, Later, Crossed, Always };

struct DropOptions {
    ReadAt readAt = ReadAt::Drop;
    bool ansi = false;
    bool refuse = false;
};

/// Takes text by drag-and-drop and hands it on at the time the options say. Counted by reference, as OLE wants it.
class TextDropTarget final : public IDropTarget {
  public:
    /// `entered` tells when a drag has come in and its data has been read, if it is read then.
    TextDropTarget(DropOptions options, std::function<void()> entered,
                   std::function<void(const std::wstring&)> received);
    TextDropTarget(const TextDropTarget&) = delete;
    TextDropTarget& operator=(const TextDropTarget&) = delete;

    /// With ReadAt::Later or Crossed: reads now what was kept before.
    void ReadNow();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL place, DWORD* effect) noexcept override;
    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL place, DWORD* effect) noexcept override;
    HRESULT STDMETHODCALLTYPE DragLeave() noexcept override;
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL place, DWORD* effect) noexcept override;

  private:
    ~TextDropTarget();
    [[nodiscard]] std::wstring TextFrom(IDataObject& data) const;
    void Keep(IDataObject* data);
    void Forget();

    DropOptions options_;
    std::function<void()> entered_;
    std::function<void(const std::wstring&)> received_;
    std::wstring readAtEntry_;
    IDataObject* dropped_ = nullptr;
    ULONG references_ = 1;
};

} // namespace vextrel::target
