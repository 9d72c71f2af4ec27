#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>
#include <utility>

namespace desktop {

/// A control's widget: made when asked for, deleted with the control unless a window has adopted it.
template <class T> class WidgetOwner {
public:
    WidgetOwner() = default;
    ~WidgetOwner() {
        if (widget_ && !widget_->parent()) widget_->deleteLater();
    }
    WidgetOwner(const WidgetOwner&) = delete;
    WidgetOwner& operator=(const WidgetOwner&) = delete;

    template <class Make> T* Get(Make make) {
        if (!widget_) widget_ = make();
        return widget_;
    }
    /// Null while there is none.
    T* IfAny() const { return widget_; }

private:
    QPointer<T> widget_;
};

} // namespace desktop
