#include "desktop/ContrastStyle.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace desktop {

namespace {

/// How bright a colour is seen, from 0 to 1 (relative luminance).
double Brightness(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QPen OutlineOf(const QStyleOption& option) {
    const bool focused = option.state & QStyle::State_HasFocus;
    const bool selected = option.state & QStyle::State_Selected;
    const QPalette::ColorGroup group =
        option.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled;
    const QPalette::ColorRole role = selected  ? QPalette::HighlightedText
                                     : focused ? QPalette::Highlight
                                               : QPalette::WindowText;
    return {option.palette.color(group, role), focused && !selected ? 2.0 : 1.0};
}

enum class Shape { Box, Circle };

void DrawOutline(QPainter& painter, const QStyleOption& option, Shape shape = Shape::Box) {
    const QPen pen = OutlineOf(option);
    const double inset = pen.widthF() / 2;
    const QRectF around = QRectF(option.rect).adjusted(inset, inset, -inset, -inset);
    painter.save();
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    if (shape == Shape::Circle) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawEllipse(around);
    } else {
        painter.drawRect(around);
    }
    painter.restore();
}

} // namespace

bool ContrastStyle::IsHighContrast(const QPalette& palette) {
    constexpr double high = 20; // of 21, black and white
    const double window = Brightness(palette.color(QPalette::Window));
    const double text = Brightness(palette.color(QPalette::WindowText));
    return (std::max(window, text) + 0.05) / (std::min(window, text) + 0.05) >= high;
}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!IsHighContrast(option->palette)) return;
    switch (element) {
    case PE_Frame:
    case PE_FrameLineEdit:
    case PE_FrameMenu:
    case PE_FrameGroupBox:
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        DrawOutline(*painter, *option);
        break;
    case PE_IndicatorRadioButton:
        DrawOutline(*painter, *option, Shape::Circle);
        break;
    default:
        break;
    }
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox && IsHighContrast(option->palette)) DrawOutline(*painter, *option);
}

void ContrastStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (!IsHighContrast(option->palette)) return;
    if (element == CE_TabBarTabShape) {
        QStyleOption plain = *option; // the tab in front is "selected" in another sense
        plain.state &= ~State_Selected;
        DrawOutline(*painter, plain);
    } else if (element == CE_HeaderSection) {
        painter->save();
        painter->setPen(option->palette.color(QPalette::WindowText));
        painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
        painter->restore();
    }
}

} // namespace desktop
