#pragma once

#include "desktop/controls/ControlObject.h"

#include <QAbstractButton>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <gtest/gtest.h>

#include <ctime>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace desktop::test {

/// A request that a control sent.
struct Sent {
    std::string destination; // "KvTM10", unless sent to somebody else
    std::string type;
    std::map<std::string, std::string> parameters;
};

/// What answers a control that has no component behind it, and remembers what it was asked.
class Peer {
public:
    Peer();
    ControlServices Services();

    std::vector<Sent> sent;
    std::map<std::string, std::string> replies;          // by request type
    std::map<std::string, std::function<void()>> doings; // what a request brings about
    std::map<QString, QString> problems;                 // by tool name
    std::map<int, QString> texts;
    std::map<QString, QStringList> choices;
    /// Tells the controls of new options; nobody follows them before the control asked to.
    std::function<void(const std::string& options)> newOptions;

    std::vector<std::string> Types() const;
    std::vector<Sent> Of(const std::string& type) const;

private:
    std::string Answer(std::string destination, std::string_view type,
                       std::span<const arvon::host::ParameterRecord> parameters);
};

/// Shows a widget as a window that has the keyboard.
void ShowInFront(QWidget& widget);
/// The child of that object name; the test ends with a clear text when there is none.
template <class T> T& Child(const QWidget& widget, const QString& objectName) {
    T* child = widget.findChild<T*>(objectName);
    if (!child) throw std::runtime_error("no child " + objectName.toStdString());
    return *child;
}
void Click(QWidget& widget);
/// The visible controls and texts below a widget that have no accessible name, as class and object name.
QStringList Unnamed(const QWidget& widget);
/// Saves a picture of the widget in light and dark colours into the folder that ARVON_PICTURES names; nothing
/// without it.
void TakePictures(QWidget& widget, const QString& name);
void UseDarkColours(bool dark);
/// Milliseconds of processor time that this program took since the making: what else runs does not count.
class WorkClock {
public:
    double Restart();

private:
    std::clock_t start_ = std::clock();
};
/// Waits, with events going on, until `isSo`; false after five seconds.
bool WaitUntil(const std::function<bool()>& isSo);

} // namespace desktop::test
