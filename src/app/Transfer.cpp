#include "app/Transfer.h"

#include "transfer/DropSource.h"
#include "win32/Com.h"
#include "win32/EventGuard.h"
#include "win32/FreedMemory.h"

namespace vextrel {

namespace {

struct HandlerNames {
    const wchar_t* start;
    const wchar_t* complete;
};
constexpr HandlerNames maskedHandlers{L"txtPassword_OLEStartDrag", L"txtPassword_OLECompleteDrag"};
constexpr HandlerNames plainHandlers{L"txtText_OLEStartDrag", L"txtText_OLECompleteDrag"};

/// A few words for the status bar. That something arrived is never claimed: nobody can know it.
std::wstring NoticeOf(const InjectionOutcome& outcome) {
    switch (outcome.kind) {
    case InjectionOutcome::Kind::Injected: return {};
    case InjectionOutcome::Kind::NoWindow: return L"No window to inject into";
    case InjectionOutcome::Kind::OwnWindow: return L"Nothing injected here";
    case InjectionOutcome::Kind::Refused:
        return L"Refused by Windows (error " + std::to_wstring(outcome.errorCode) + L")";
    }
    return {};
}

} // namespace

void Transfer::Drag() {
    if (operations_.IsResting()) {
        return;
    }
    notice_.clear();
    const Operations::Scope transfer(operations_, Operations::Kind::Transfer);
    const HandlerNames& names = field_.TextIsMasked() ? maskedHandlers : plainHandlers;
    data_.reset(); // whoever was handed the last one has had time enough
    ComPtr<IDataObject> shared;
    GuardEvent(form_.Handle(), names.start, [&] {
        data_ = std::make_unique<DragData>();
        StartDrag(data_->Object());
        data_->GetForThisThread(shared);
    });
    if (shared.Get() == nullptr) {
        data_.reset();
        note_.reset();
        field_.SelectedPassword().Clear();
        return;
    }
    const ComPtr<DropSource> source(new DropSource(data_->Object(), mode_ == DragDropMode::Inject));
    DWORD effect = DROPEFFECT_NONE;
    const HRESULT result = ::DoDragDrop(shared.Get(), source.Get(), DROPEFFECT_COPY, &effect);
    const bool dropped = result == DRAGDROP_S_DROP && effect != DROPEFFECT_NONE;
    if (!dropped) {
        data_->Object().Discard();
    }
    data_->EndSoon();
    const bool mayInject = mode_ == DragDropMode::Inject && source->WasReleased();
    GuardEvent(form_.Handle(), names.complete,
               [&] { CompleteDrag(dropped || mayInject ? TransferEnd::HandedOver : TransferEnd::NothingHandedOver); });
    // However the end went, neither waits for the next drag.
    note_.reset();
    field_.SelectedPassword().Clear();
    OverwriteFreedMemory();
}

void Transfer::DiscardHanded() noexcept {
    if (data_) {
        data_->Object().Discard();
    }
}

void Transfer::StartDrag(TextDataObject& data) {
    plan_ = PlanTransfer(form_.VisibleBox().Selection(), field_.CurrentPassword().Size());
    field_.DetermineSelectedPassword();
    note_ = std::make_unique<DragHint>();
    // Ordinary targets get nothing when injecting; what arrives comes by injection alone.
    data.SetText(mode_ == DragDropMode::Inject ? std::wstring_view() : field_.SelectedPassword().View());
    note_->ShowFor(mode_, form_.Handle());
}

void Transfer::CompleteDrag(TransferEnd end) {
    note_.reset();
    if (mode_ == DragDropMode::Inject && end == TransferEnd::HandedOver) {
        end = InjectAtPointer();
    }
    if (TakesAway(end, keepPassword_)) {
        field_.CurrentPassword().Replace(plan_.carried, {});
        field_.ShowPassword(plan_.savedCaret);
    } else {
        form_.VisibleBox().Select({plan_.savedCaret, 0});
    }
    ::InvalidateRect(form_.VisibleBox().Handle(), nullptr, TRUE);
}

TransferEnd Transfer::InjectAtPointer() {
    const InjectionOutcome outcome = Inject(field_.SelectedPassword());
    notice_ = NoticeOf(outcome);
    return outcome.kind == InjectionOutcome::Kind::Injected ? TransferEnd::HandedOver : TransferEnd::NothingHandedOver;
}

} // namespace vextrel
