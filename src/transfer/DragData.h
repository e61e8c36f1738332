#pragma once

#include "transfer/TextDataObject.h"
#include "win32/handles.h"

namespace vextrel {

/// The data of one drag, in an apartment of its own. Calls from other programs come in there on threads of the
/// transport between processes, where the system tells which process makes each; on a thread with windows it tells
/// nothing.
class DragData : private Pinned {
  public:
    /// @throws Error with the system's code.
    DragData();
    /// From here on nobody gets anything any more.
    ~DragData();

    [[nodiscard]] TextDataObject& Object() const noexcept { return *object_; }
    /// The data as the thread that drags sees it, for OLE to hand on. @throws Error with the system's code.
    void GetForThisThread(ComPtr<IDataObject>& data);
    /// The drag is over. Some targets read the data after that: they have two seconds.
    void EndSoon() noexcept { ::SetEvent(over_.Get()); }

  private:
    static DWORD WINAPI Serve(void* self) noexcept;

    ComPtr<TextDataObject> object_;
    UniqueKernelHandle ready_; ///< the object can be reached from elsewhere
    UniqueKernelHandle over_;
    UniqueKernelHandle ended_;
    ComPtr<IStream> shared_;  ///< what another apartment gets the object from, once
    HRESULT result_ = E_FAIL; ///< of sharing
    UniqueKernelHandle thread_;
};

} // namespace vextrel
