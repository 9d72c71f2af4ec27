#pragma once

#include "base/Object.h"
#include "host/Observer.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

class QObject;
class QWidget;

namespace desktop {

/// What a control may ask of the world. Every member may be missing; the control then does without.
struct ControlServices {
    /// Sends a request as `source` to the component through the router; returns the reply.
    std::function<std::string(std::string_view type, std::span<const arvon::host::ParameterRecord> parameters,
                              std::string_view source)>
        request;
    /// String resource by number; empty when unknown.
    std::function<QString(int id)> text;
    /// Why a tool cannot be used (program missing, library failed), by tool name; empty when it can.
    std::function<QString(const QString& toolName)> problem;
    /// The same as `request`, to another listener ("Qillo110"): what the updates component offers.
    std::function<std::string(std::string_view destination, std::string_view type,
                              std::span<const arvon::host::ParameterRecord> parameters,
                              std::string_view source)>
        requestOf;
    /// Values that the option of that name ("cmbLanguage") can take, where the host knows them all; else
    /// empty.
    std::function<QStringList(const QString& optionName)> choices;
    /// From now on, and as long as `who` lives, tells the options text of every "NewOptions" that the
    /// component sends to the controls' listener ("KvTMU110").
    std::function<void(QObject* who, std::function<void(const std::string& options)> told)> onNewOptions;
};

/// A control of the library: its members are found by name (base::Object), its widget is what a window shows.
class ControlObject : public base::Object {
public:
    /// Made when first asked for, and anew after a window destroyed it. The object owns it until a window
    /// adopts it by giving it a parent. When shown, the widget asks the component for what it shows.
    virtual QWidget* Widget() = 0;
    /// Puts the texts of the language in force.
    virtual void Retranslate() {}
    /// Asks the component anew: for when another node shows the same view, or the tools have changed. Does
    /// nothing while the widget is not to be seen.
    virtual void Refresh() {}
    /// Whether something was typed that closing now would lose.
    virtual bool HasChanges() const { return false; }
    /// What the updates component answered somebody else to "ShowUpdates"; true when this control shows it.
    virtual bool TakeOffer(const std::string& /*answer*/) { return false; }
};

/// By programmatic name ("KvTMU110.ctlOptions", any letter case); null for a name that is none of the
/// library.
std::shared_ptr<ControlObject> MakeControl(std::string_view programmaticName,
                                           const ControlServices& services);

} // namespace desktop
