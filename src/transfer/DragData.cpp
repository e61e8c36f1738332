#include "transfer/DragData.h"

#include "win32/FreedMemory.h"
#include "win32/Text.h"

namespace vextrel {

namespace {

constexpr DWORD graceMs = 2000;

UniqueKernelHandle NewEvent() {
    UniqueKernelHandle event(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!event) {
        ThrowLastError();
    }
    return event;
}

} // namespace

DragData::DragData()
    : object_(new TextDataObject)
    , ready_(NewEvent())
    , over_(NewEvent())
    , ended_(NewEvent())
    , thread_(::CreateThread(nullptr, 0, &DragData::Serve, this, 0, nullptr)) {
    if (!thread_) {
        ThrowLastError();
    }
    ::WaitForSingleObject(ready_.Get(), INFINITE);
}

DragData::~DragData() {
    ::SetEvent(ended_.Get());
    ::SetEvent(over_.Get());
    ::WaitForSingleObject(thread_.Get(), INFINITE);
}

void DragData::GetForThisThread(ComPtr<IDataObject>& data) {
    HRESULT result = result_;
    if (SUCCEEDED(result)) {
        shared_->Seek({}, STREAM_SEEK_SET, nullptr);
        result = ::CoUnmarshalInterface(shared_.Get(), __uuidof(IDataObject), reinterpret_cast<void**>(data.Out()));
    }
    if (FAILED(result)) {
        ::SetLastError(static_cast<DWORD>(result));
        ThrowLastError();
    }
}

DWORD WINAPI DragData::Serve(void* self) noexcept {
    auto& drag = *static_cast<DragData*>(self);
    const HRESULT apartment = ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    drag.result_ = SUCCEEDED(apartment) ? ::CreateStreamOnHGlobal(nullptr, TRUE, drag.shared_.Out()) : apartment;
    if (SUCCEEDED(drag.result_)) {
        // As for another process, which it is for in the end: shared between threads of one, Wine would hand the
        // numbers of memory blocks to the other.
        drag.result_ = ::CoMarshalInterface(drag.shared_.Get(), __uuidof(IDataObject), drag.object_.Get(), MSHCTX_LOCAL,
                                            nullptr, MSHLFLAGS_NORMAL);
    }
    ::SetEvent(drag.ready_.Get());
    ::WaitForSingleObject(drag.over_.Get(), INFINITE);
    ::WaitForSingleObject(drag.ended_.Get(), graceMs);
    drag.object_->Discard();
    ::CoDisconnectObject(drag.object_.Get(), 0);
    if (SUCCEEDED(apartment)) {
        ::CoUninitialize();
        OverwriteFreedMemory();
    }
    return 0;
}

} // namespace vextrel
