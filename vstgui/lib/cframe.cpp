// CFrame: window, size, focus and painting.
#include "vstgui/lib/cframe.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/invalidrectcollector.h"
#include "vstgui/lib/vstguieditorinterface.h"

#include <algorithm>

namespace VSTGUI {

const IdStringPtr kMsgNewFocusView = "new focus view";
const IdStringPtr kMsgOldFocusView = "old focus view";

namespace {

int openFrames = 0;

void notifyParents(CView* view, IdStringPtr message)
{
    for (CView* v = view->getParentView(); v; v = v->getParentView())
        v->notify(view, message);
}

}  // namespace

CFrame::CFrame(const CRect& size, VSTGUIEditorInterface* editor)
    : CViewContainer(size), editor(editor)
{
    pParentFrame = this;
}

CFrame::~CFrame() = default;

bool CFrame::open(void* systemWindow, PlatformType systemWindowType, IPlatformFrameConfig* config)
{
    if (!systemWindow || isAttached())
        return false;
    platformFrame = owned(IPlatformFrame::createPlatformFrame(
        this, CRect(CPoint(), size.getSize()), systemWindow, systemWindowType, config));
    if (!platformFrame)
        return false;
    ++openFrames;
    attached(this);
    pParentView = nullptr;
    invalid();
    return true;
}

void CFrame::close()
{
    if (closed)
        return;
    closed = true;
    hovered.clear();
    if (platformFrame)
        platformFrame->setMouseCursor(kCursorDefault);
    removeAll(true);
    setFlag(kAttachedFlag, false);
    if (platformFrame) {
        const SharedPointer<IPlatformFrame> window = std::move(platformFrame);
        window->close();
        if (--openFrames == 0)
            freePredefinedPlatformFonts();
    }
    forget();
}

bool CFrame::setSize(CCoord width, CCoord height)
{
    if (width == getWidth() && height == getHeight())
        return false;
    CRect newSize(size);
    newSize.setSize(CPoint(width, height));
    if (editor && !editor->beforeSizeChange(newSize, size))
        return false;
    if (platformFrame && !platformFrame->setSize(CRect(CPoint(), newSize.getSize())))
        return false;
    setViewSize(newSize);
    setMouseableArea(newSize);
    return true;
}

bool CFrame::getSize(CRect& rect) const
{
    return platformFrame && platformFrame->getSize(rect);
}

bool CFrame::getPosition(CCoord& x, CCoord& y) const
{
    CPoint position;
    if (!platformFrame || !platformFrame->getGlobalPosition(position))
        return false;
    x = position.x;
    y = position.y;
    return true;
}

void CFrame::idle()
{
    if (!kDirtyCallAlwaysOnMainThread)
        invalidateDirtyViews();
}

bool CFrame::getCurrentMouseLocation(CPoint& where) const
{
    return platformFrame && platformFrame->getCurrentMousePosition(where);
}

CButtonState CFrame::getCurrentMouseButtons() const
{
    CButtonState buttons;
    if (platformFrame)
        platformFrame->getCurrentMouseButtons(buttons);
    return buttons;
}

void CFrame::setFocusView(CView* view)
{
    if (view == focusView || (settingFocus && focusView))
        return;
    if (!active) {
        focusOnActivate = view;
        return;
    }
    const CBaseObjectGuard guard(this);
    const SharedPointer<CView> newFocus = view && view->isAttached() ? view : nullptr;
    const SharedPointer<CView> oldFocus = focusView;
    const bool outermost = !settingFocus;
    settingFocus = true;
    focusView = newFocus;
    if (newFocus && newFocus->wantsFocus()) {
        newFocus->invalid();
        notifyParents(newFocus, kMsgNewFocusView);
    }
    if (oldFocus) {
        if (oldFocus->wantsFocus()) {
            oldFocus->invalid();
            notifyParents(oldFocus, kMsgOldFocusView);
        }
        oldFocus->looseFocus();
    }
    // The calls above may have removed the view or moved the focus.
    if (newFocus && newFocus == focusView && newFocus->wantsFocus())
        newFocus->takeFocus();
    if (outermost)
        settingFocus = false;
}

bool CFrame::advanceNextFocusView(CView* oldFocus, bool reverse)
{
    std::vector<CView*> views;
    collectFocusViews(views);
    if (reverse)
        std::reverse(views.begin(), views.end());
    auto next = std::find(views.begin(), views.end(), oldFocus);
    if (next != views.end())
        ++next;
    if (next == views.end())
        next = views.begin();
    CView* view = next == views.end() || *next == oldFocus ? nullptr : *next;
    setFocusView(view);
    return view != nullptr;
}

void CFrame::onActivate(bool state)
{
    if (active == state)
        return;
    if (state) {
        active = true;
        setFocusView(std::exchange(focusOnActivate, nullptr));
    } else {
        focusOnActivate = focusView;
        setFocusView(nullptr);
        active = false;
    }
}

void CFrame::onViewAdded(CView*) { }

void CFrame::onViewRemoved(CView* view)
{
    const auto it = std::find(hovered.begin(), hovered.end(), view);
    hovered.erase(it, hovered.end());
    for (Press* const each : {&press, &pressBefore}) {
        auto& views = each->views;
        views.erase(std::remove(views.begin(), views.end(), view), views.end());
    }
    if (focusOnActivate == view)
        focusOnActivate = nullptr;
    if (focusView != view)
        return;
    if (settingFocus) {
        focusView = nullptr;
        view->looseFocus();
    } else {
        setFocusView(nullptr);
    }
}

void CFrame::beginEdit(int32_t tag)
{
    if (editor)
        editor->beginEdit(tag);
}

void CFrame::endEdit(int32_t tag)
{
    if (editor)
        editor->endEdit(tag);
}

int32_t CFrame::getKnobMode() const
{
    const int32_t mode = editor ? editor->getKnobMode() : -1;
    return mode == -1 ? kDefaultKnobMode : mode;
}

void CFrame::onStartLocalEventLoop()
{
    if (!collector)
        return;
    collector->flush();
    collector = nullptr;
}

void CFrame::draw(CDrawContext* context)
{
    CFrame::drawRect(context, size);
}

void CFrame::drawRect(CDrawContext* context, const CRect& updateRect)
{
    if (updateRect.isEmpty())
        return;
    context->setClipRect(updateRect);
    CViewContainer::drawRect(context, updateRect);
}

void CFrame::invalidRect(const CRect& rect)
{
    if (!platformFrame || !isVisible())
        return;
    CRect visible(rect);
    if (visible.bound(CRect(CPoint(), size.getSize())).isEmpty())
        return;
    if (collector)
        collector->add(visible);
    else
        platformFrame->invalidRect(visible);
}

}  // namespace VSTGUI
