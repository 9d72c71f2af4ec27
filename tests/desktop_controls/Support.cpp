#include "tests/desktop_controls/Support.h"

#include "desktop/QtText.h"

#include <algorithm>
#include <utility>

namespace desktop::test {

Peer::Peer() = default;

ControlServices Peer::Services() {
    ControlServices services;
    services.request = [this](std::string_view type, std::span<const arvon::host::ParameterRecord> parameters,
                              std::string_view) { return Answer("KvTM10", type, parameters); };
    services.requestOf = [this](std::string_view destination, std::string_view type,
                                std::span<const arvon::host::ParameterRecord> parameters, std::string_view) {
        return Answer(std::string(destination), type, parameters);
    };
    services.text = [this](int id) { return texts[id]; };
    services.problem = [this](const QString& toolName) { return problems[toolName]; };
    services.choices = [this](const QString& optionName) { return choices[optionName]; };
    services.onNewOptions = [this](QObject* who, std::function<void(const std::string&)> told) {
        newOptions = [who = QPointer<QObject>(who), told = std::move(told)](const std::string& options) {
            if (who) told(options);
        };
    };
    return services;
}

std::string Peer::Answer(std::string destination, std::string_view type,
                         std::span<const arvon::host::ParameterRecord> parameters) {
    Sent request{std::move(destination), std::string(type), {}};
    for (const auto& parameter : parameters)
        request.parameters[parameter.name] = parameter.value.ToText();
    const std::string name =
        request.type + (request.parameters.contains("ShowNew") ? request.parameters["ShowNew"] : "");
    sent.push_back(std::move(request));
    if (const auto doing = doings.find(name); doing != doings.end()) doing->second();
    return replies[name];
}

std::vector<std::string> Peer::Types() const {
    std::vector<std::string> types;
    for (const Sent& request : sent)
        types.push_back(request.type);
    return types;
}

std::vector<Sent> Peer::Of(const std::string& type) const {
    std::vector<Sent> found;
    for (const Sent& request : sent)
        if (request.type == type) found.push_back(request);
    return found;
}

void ShowInFront(QWidget& widget) {
    widget.show();
    QApplication::setActiveWindow(&widget);
    QCoreApplication::processEvents();
}

void Click(QWidget& widget) {
    // a check box takes clicks where its mark and text are
    QTest::mouseClick(&widget, Qt::LeftButton, {},
                      QPoint(std::min(10, widget.width() / 2), widget.height() / 2));
}

QStringList Unnamed(const QWidget& widget) {
    QStringList unnamed;
    for (const QWidget* part : widget.findChildren<QWidget*>()) {
        if (!part->isVisible()) continue;
        const bool isText = qobject_cast<const QLabel*>(part) != nullptr;
        if (part->focusPolicy() == Qt::NoFocus && !isText) continue;
        bool isInner = false; // a part of a control that the toolkit made
        for (const QWidget* outer = part->parentWidget(); outer && outer != &widget;
             outer = outer->parentWidget())
            isInner = isInner || outer->inherits("QComboBox") || outer->inherits("QLineEdit") ||
                      outer->inherits("QAbstractItemView") || outer->inherits("QPlainTextEdit");
        if (isInner) continue;
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(part));
        if (!interface || interface->text(QAccessible::Name).isEmpty())
            unnamed += QString(part->metaObject()->className()) + ' ' + part->objectName();
    }
    return unnamed;
}

void UseDarkColours(bool dark) {
    QPalette palette = QApplication::style()->standardPalette();
    if (dark) {
        const QColor window(0x20, 0x21, 0x24), base(0x18, 0x19, 0x1b), text(0xe8, 0xea, 0xed),
            grey(0x80, 0x86, 0x8b);
        palette = QPalette(text, window, window.lighter(140), base, window.lighter(120), text, base);
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::Button, window.lighter(130));
        palette.setColor(QPalette::Highlight, QColor(0x4c, 0x8b, 0xf5));
        palette.setColor(QPalette::HighlightedText, Qt::white);
        palette.setColor(QPalette::AlternateBase, QColor(0x24, 0x25, 0x28));
        palette.setColor(QPalette::PlaceholderText, grey);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(QPalette::Disabled, role, grey);
    }
    QApplication::setPalette(palette);
    QCoreApplication::processEvents();
}

void TakePictures(QWidget& widget, const QString& name) {
    const QString folder = qEnvironmentVariable("ARVON_PICTURES");
    if (folder.isEmpty()) return;
    QDir().mkpath(folder);
    for (const bool dark : {false, true}) {
        UseDarkColours(dark);
        widget.grab().save(folder + "/controls-" + name + (dark ? "-dark.png" : ".png"));
    }
    UseDarkColours(false);
}

double WorkClock::Restart() {
    const std::clock_t before = std::exchange(start_, std::clock());
    return 1000.0 * static_cast<double>(start_ - before) / CLOCKS_PER_SEC;
}

bool WaitUntil(const std::function<bool()>& isSo) {
    return QTest::qWaitFor(isSo, 5000);
}

} // namespace desktop::test
