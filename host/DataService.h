#pragma once

#include "core/contract/Framework.h"
#include "host/Trace.h"

namespace platform {
class FilePaths;
}

namespace arvon::host {

/// The messaging object: the service "Data Service" with its request "getXMLData", which answers the XML text
/// of the nodes that "query" (an XPath; empty: the whole document) selects in the file named by "path". No
/// reply comes for a file that cannot be read or a query that cannot be evaluated; why is told as a problem.
class Messaging final : public IMessaging {
public:
    Messaging(Trace& trace, const platform::FilePaths& paths) : trace_(trace), paths_(paths) {}

    std::shared_ptr<IServiceRequest> CreateRequest(std::string_view service, std::string_view name,
                                                   std::string_view sender) override;

private:
    Trace& trace_;
    const platform::FilePaths& paths_;
};

} // namespace arvon::host
