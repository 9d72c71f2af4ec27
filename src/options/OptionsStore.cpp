#include "base/Text.h"
#include "base/XmlText.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "options/OptionAddress.h"
#include "options/OptionErrors.h"
#include "options/OptionNames.h"
#include "options/OptionsDocument.h"
#include "options/PrinterEntry.h"
#include "options/ToolOptions.h"

#include <exception>

namespace kvtm {

using base::XmlNode;

namespace {

constexpr std::string_view affirmed = "True";
constexpr std::string_view refused = "False";

/// The options that come into being when they are first read.
constexpr bool IsMadeOnFirstRead(std::string_view name) {
    return name == sortOption::Order || name == sortOption::Key;
}

/// Writes a line when an exception passes.
class NoteOnFailure {
public:
    NoteOnFailure(platform::DebugOutput& output, std::string_view line) : output_(output), line_(line) {}
    ~NoteOnFailure() {
        if (std::uncaught_exceptions() > pending_) output_.Write(line_);
    }
    NoteOnFailure(const NoteOnFailure&) = delete;
    NoteOnFailure& operator=(const NoteOnFailure&) = delete;

private:
    platform::DebugOutput& output_;
    const std::string_view line_;
    const int pending_ = std::uncaught_exceptions();
};

} // namespace

std::string ToolMain::OptionsFile() const {
    return m_sAppPath + "\\OPTIONS.XML";
}

std::string ToolMain::getOptionData(std::string_view sToolID) {
    constexpr std::string_view proc = "cToolMain.getOptionData";
    return Guarded(proc, std::string(), [&] {
        const std::string query = sToolID.empty() ? std::string() : optionAddress::OfTool(sToolID);
        const std::optional<std::string> tool = AskDataService(query);
        const bool hasNoOptions = tool && base::TrimBlanks(*tool).empty();
        if (hasNoOptions && !sToolID.empty()) return std::string();
        const std::optional<std::string> options = AskDataService("//Options");
        if (!options) {
            throw OwnError(optionError::NoData, proc, "no data came for \"" + OptionsFile() + "\"");
        }
        OptionsDocument document;
        document.LoadText(base::TrimBlanks(*options));
        EnterDefaultPrinter(document);
        SetSecureOptions(document);
        return *document.Text();
    });
}

std::optional<std::string> ToolMain::AskDataService(const std::string& query) {
    const std::shared_ptr<arvon::IMessaging> messaging = m_oFramework->Messaging();
    const std::shared_ptr<arvon::IServiceRequest> request =
        messaging ? messaging->CreateRequest("Data Service", "getXMLData", Self) : nullptr;
    if (!request) {
        throw OwnError(optionError::NoData, "cToolMain.getOptionData", "the host makes no data requests");
    }
    request->AddParameter("vrex", Self);
    request->AddParameter("path", OptionsFile());
    request->AddParameter("query", query);
    if (!request->Send()) return std::nullopt;
    return request->Data();
}

void ToolMain::EnterDefaultPrinter(OptionsDocument& document) {
    const XmlNode option = document.FirstOption(optionName::DefaultPrinter);
    if (!option) return;
    for (const std::string& entry : GetPrinters(GetPlatformId())) {
        if (!printerEntry::IsDefault(entry)) continue;
        const XmlNode value = option.SelectSingle("Value");
        if (!value) throw MissingValue("cToolMain.getOptionData", optionName::DefaultPrinter);
        document.SetText(value, printerEntry::NameOf(entry));
        return;
    }
}

std::string ToolMain::GetOptionValue(const RequestRef& request) {
    return Guarded("GetOptionValue", std::string(refused), [&] {
        const NoteOnFailure note(*m_oServices.debugOutput, "Error in GetOptionValue");
        const std::string sOptionName = TextParameter(*request, parameter::OptionName);
        const std::string sToolID = TextParameter(*request, parameter::ToolID);
        if (TextParameter(*request, parameter::AddSubscriber) == "-1") {
            const std::string sSubscriberID = TextParameter(*request, parameter::SubscriberID);
            if (!sSubscriberID.empty()) AddSubscriber(sSubscriberID);
        }
        if (!m_oOptionsDoc || m_oOptionsDoc->IsEmpty()) LoadOptionsDocument();

        std::string value;
        switch (m_oOptionsDoc->ReadValue(sToolID, sOptionName, value)) {
        case OptionsDocument::Reading::Read:
            return value;
        case OptionsDocument::Reading::NoValue:
            throw MissingValue("GetOptionValue", sOptionName);
        case OptionsDocument::Reading::NoOption:
            break;
        }
        // made for the next read; this one still fails
        if (IsMadeOnFirstRead(sOptionName)) SetOptionDefault(sToolID, sOptionName, "");
        throw MissingOption("GetOptionValue", sToolID, sOptionName);
    });
}

std::string ToolMain::ReadOption(std::string_view sToolID, std::string_view sOptionName) {
    const RequestRef request = NewRequest(request::GetOptionValue);
    AddText(request->Parameters(), parameter::ToolID, sToolID);
    AddText(request->Parameters(), parameter::OptionName, sOptionName);
    return GetOptionValue(request);
}

void ToolMain::LoadOptionsDocument() {
    const std::string options = getOptionData("");
    if (options.empty()) {
        throw OwnError(optionError::NoData, "GetOptionValue", "there are no options to read");
    }
    auto document = std::make_unique<OptionsDocument>();
    document->LoadText(options);
    m_oOptionsDoc = std::move(document);
}

std::string ToolMain::SetOptionValue(const RequestRef& request) {
    constexpr std::string_view proc = "SetOptionValue";
    return Guarded(proc, std::string(refused), [&] {
        const std::string sOptionName = RequiredText(request, parameter::OptionName, proc);
        const std::string sOptionValue = RequiredText(request, parameter::OptionValue, proc);
        const std::string sToolID = RequiredText(request, parameter::ToolID, proc);
        bool bAddMissing = false;
        Skipping([&] { bAddMissing = ParameterValue(*request, parameter::AddMissing).ToBoolean(); });
        if (!m_oOptionsDoc) {
            throw OwnError(optionError::NotLoaded, proc, "the options were not read before this write");
        }

        XmlNode option = m_oOptionsDoc->Option(sToolID, sOptionName);
        if (!option) {
            if (!bAddMissing) throw MissingOption(proc, sToolID, sOptionName);
            const XmlNode tool = m_oOptionsDoc->Tool(sToolID);
            if (!tool) {
                throw OwnError(optionError::NoTool, proc,
                               "there are no options of a tool \"" + sToolID + "\"");
            }
            base::RequireXmlText(sOptionValue); // an option half made would be saved by the next write
            option = m_oOptionsDoc->AppendOption(tool, sOptionName);
        }
        const XmlNode value = option.SelectSingle("Value");
        if (!value) throw MissingValue(proc, sOptionName);
        m_oOptionsDoc->SetText(value, sOptionValue);
        SetSecureOptions(*m_oOptionsDoc);
        SaveAndTell(m_oOptionsDoc->Text());
        return std::string(affirmed);
    });
}

std::string ToolMain::SetOptionDefault(std::string_view sToolID, std::string_view sOptionName,
                                       std::string_view sOptionValue) {
    const RequestRef request = NewRequest(request::SetOptionValue);
    AddText(request->Parameters(), parameter::ToolID, sToolID);
    AddText(request->Parameters(), parameter::OptionName, sOptionName);
    AddText(request->Parameters(), parameter::OptionValue, sOptionValue);
    AddInteger(request->Parameters(), parameter::AddMissing, -1);
    return SetOptionValue(request);
}

void ToolMain::SaveAndTell(const std::shared_ptr<const std::string>& options) {
    const base::Value sOptionsXML(options);
    base::Value body; // what cannot be made now is made, or reported, when it is sent
    SaveOptionsDocument(*options, [&] {
        if (m_asSubscribers.size() > 1) Skipping([&] { body = NoticeOfOptions(sOptionsXML)->Xml(); });
    });
    NewOptions(sOptionsXML, std::move(body));
}

void ToolMain::SaveOptionsDocument(const std::string& sOptionsXML, const std::function<void()>& work) {
    m_oToolOptions = std::make_unique<ToolOptions>(m_oServices);
    if (m_oOptionsDoc->HasSoundSets()) { // records that nobody asks for are not made
        m_oToolOptions->SaveText(sOptionsXML, OptionsFile(), work);
    } else {
        m_oToolOptions->Load(sOptionsXML);
        m_oToolOptions->SaveOrThrow(sOptionsXML, OptionsFile());
    }
}

RequestRef ToolMain::NoticeOfOptions(const base::Value& sOptionsXML) {
    RequestRef notice = NewRequest(request::NewOptions);
    notice->Parameters().Add(arvon::ParameterType::Text, parameter::Options, sOptionsXML, true);
    return notice;
}

// The notice is the same for all: its text, as large as the options, is made once and shared.
void ToolMain::NewOptions(const base::Value& sOptionsXML, base::Value body) {
    const std::vector<std::string> subscribers(m_asSubscribers.begin() + 1, m_asSubscribers.end());
    RequestRef notice;
    for (const std::string& subscriber : subscribers) {
        if (!m_oFramework->Router()->IsRegistered(subscriber)) continue;
        if (body.IsEmpty() && !notice) notice = NoticeOfOptions(sOptionsXML);
        Guarded("SendRequestToOwner", [&] {
            if (body.IsEmpty()) body = notice->Xml();
            SendBodyToOwner(body, subscriber);
        });
    }
}

std::string ToolMain::RequiredText(const RequestRef& request, std::string_view parameter,
                                   std::string_view sProc) const {
    const std::shared_ptr<arvon::IParameter> found = request->Parameters().Item(parameter);
    if (!found) {
        throw OwnError(optionError::NoParameter, sProc,
                       "the request has no parameter \"" + std::string(parameter) + "\"");
    }
    return found->GetValue().ToText();
}

base::ComponentError ToolMain::MissingOption(std::string_view sProc, std::string_view sToolID,
                                             std::string_view sOptionName) const {
    return OwnError(optionError::NoOption, sProc,
                    "the tool \"" + std::string(sToolID) + "\" has no option \"" + std::string(sOptionName) +
                        "\"");
}

base::ComponentError ToolMain::MissingValue(std::string_view sProc, std::string_view sOptionName) const {
    return OwnError(optionError::NoValue, sProc,
                    "the option \"" + std::string(sOptionName) + "\" has no \"Value\"");
}

} // namespace kvtm
