#pragma once

#include <QProxyStyle>

namespace desktop {

/// The usual style, with outlines that can be seen in high contrast: the usual ones are a shade of the
/// window's colour, and vanish where that is black.
class ContrastStyle final : public QProxyStyle {
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    /// Colours with next to the highest contrast that there is.
    static bool IsHighContrast(const QPalette& palette);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

} // namespace desktop
