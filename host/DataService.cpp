#include "host/DataService.h"

#include "base/ComponentError.h"
#include "base/XmlDocument.h"
#include "platform/FilePaths.h"

#include <map>
#include <string>

namespace arvon::host {

namespace {

constexpr std::string_view dataService = "Data Service";
constexpr std::string_view getXmlData = "getXMLData";

class DataRequest final : public IServiceRequest {
public:
    DataRequest(Trace& trace, const platform::FilePaths& paths) : trace_(trace), paths_(paths) {}

    void AddParameter(std::string_view name, std::string_view value) override {
        trace_.Call("DataService.AddParameter", name, value);
        parameters_.insert_or_assign(std::string(name), std::string(value));
    }

    bool Send() override {
        trace_.Call(
            "DataService.Send", [this] { return Parameter("path"); }, [this] { return Parameter("query"); });
        data_.clear();
        try {
            data_ = Answer(Parameter("path"), Parameter("query"));
        } catch (const base::ComponentError& error) {
            trace_.Problem("Data Service: " + error.Description());
            return false;
        }
        return true;
    }

    std::string Data() const override {
        trace_.Read("DataService.Data");
        return data_;
    }

private:
    std::string Parameter(std::string_view name) const {
        const auto found = parameters_.find(name);
        return found == parameters_.end() ? std::string() : found->second;
    }

    std::string Answer(const std::string& path, const std::string& query) const {
        base::XmlDocument document;
        document.LoadFile(paths_.ToSystem(path));
        if (query.empty()) return document.Text();
        std::string data;
        for (const base::XmlNode& node : document.Select(query))
            data += node.Xml();
        return data;
    }

    Trace& trace_;
    const platform::FilePaths& paths_;
    std::map<std::string, std::string, std::less<>> parameters_;
    std::string data_;
};

} // namespace

std::shared_ptr<IServiceRequest> Messaging::CreateRequest(std::string_view service, std::string_view name,
                                                          std::string_view sender) {
    trace_.Call("Messaging.CreateRequest", service, name, sender);
    if (service != dataService || name != getXmlData) return nullptr;
    return std::make_shared<DataRequest>(trace_, paths_);
}

} // namespace arvon::host
