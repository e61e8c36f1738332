#include "app/Transfer.h"

#include "transfer/DropSource.h"
#include "transfer/Injection.h"
#include "ui/DragHint.h"
#include "win32/EventGuard.h"
#include "win32/FreedMemory.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

/// A few words for the status bar. That something arrived is never claimed: nobody can know it.
std::wstring NoticeOf(const InjectionOutcome& outcome) {
    switch (outcome.kind) {
    case InjectionOutcome::Kind::Injected: return L"Posted";
    case InjectionOutcome::Kind::NoWindow: return L"No window to inject into";
    case InjectionOutcome::Kind::OwnWindow: return L"Nothing injected here";
    case InjectionOutcome::Kind::Refused:
        return L"Refused by Windows (error " + std::to_wstring(outcome.errorCode) + L")";
    }
    return {};
}

bool IsPointerOverUs() noexcept {
    POINT place{};
    return ::GetCursorPos(&place) != FALSE && IsOurs(::WindowFromPoint(place));
}

} // namespace

void Transfer::Drag() {
    if (operations_.IsResting()) {
        return;
    }
    const Operations::Scope transfer(operations_, Operations::Kind::Transfer);
    const bool masked = field_.TextIsMasked();
    data_.reset(); // whoever was handed the last one has had time enough
    TransferPlan plan;
    DragHint hint;
    ComPtr<IDataObject> shared;
    GuardEvent(form_.Handle(), masked ? L"txtPassword_OLEStartDrag" : L"txtText_OLEStartDrag", [&] {
        data_.emplace();
        plan = PlanTransfer(form_.VisibleBox().Selection(), field_.CurrentPassword().Size());
        field_.DetermineSelectedPassword();
        // Ordinary targets get nothing when injecting; what arrives comes by injection alone.
        data_->Object().SetText(Mode() == DragDropMode::Inject ? L"" : field_.SelectedPassword().View());
        hint.ShowFor(Mode(), form_.Handle());
        data_->GetForThisThread(shared);
    });
    if (shared.Get() == nullptr) {
        data_.reset();
        field_.SelectedPassword().Clear();
        return;
    }
    const ComPtr<DropSource> source(new DropSource(data_->Object(), Mode() == DragDropMode::Inject));
    DWORD effect = DROPEFFECT_NONE;
    const HRESULT result = ::DoDragDrop(shared.Get(), source.Get(), DROPEFFECT_COPY, &effect);
    const bool dropped = result == DRAGDROP_S_DROP && effect != DROPEFFECT_NONE;
    if (!dropped) {
        data_->Object().Discard();
    }
    data_->EndSoon();
    hint.Unload();
    const bool mayInject = Mode() == DragDropMode::Inject && source->WasReleased();
    if (Mode() != DragDropMode::Inject && source->WasReleased() && !IsPointerOverUs()) {
        form_.ShowNotice(dropped ? L"Dropped" : L"Not taken here: try Injection Mode");
    }
    GuardEvent(form_.Handle(), masked ? L"txtPassword_OLECompleteDrag" : L"txtText_OLECompleteDrag", [&] {
        CompleteDrag(plan, dropped || mayInject ? TransferEnd::HandedOver : TransferEnd::NothingHandedOver);
    });
    // However the end went, it does not wait for the next drag.
    field_.SelectedPassword().Clear();
    OverwriteFreedMemory();
}

void Transfer::DiscardHanded() noexcept {
    if (data_) {
        data_->Object().Discard();
    }
}

void Transfer::CompleteDrag(const TransferPlan& plan, TransferEnd end) {
    if (Mode() == DragDropMode::Inject && end == TransferEnd::HandedOver) {
        form_.ShowNotice(L"Injecting\u2026");
        const InjectionOutcome outcome = Inject(field_.SelectedPassword());
        form_.ShowNotice(NoticeOf(outcome));
        if (outcome.kind != InjectionOutcome::Kind::Injected) {
            end = TransferEnd::NothingHandedOver;
        }
    }
    if (TakesAway(end, options_.Snapshot().keepPassword)) {
        field_.CurrentPassword().Replace(plan.carried, {});
        field_.ShowPassword(plan.savedCaret);
    } else {
        form_.VisibleBox().Select({plan.savedCaret, 0});
    }
    ::InvalidateRect(form_.VisibleBox().Handle(), nullptr, TRUE);
}

} // namespace vextrel
