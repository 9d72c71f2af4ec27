#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"

#include "base/Text.h"

#include <new>

namespace kvtm {

using base::ComponentError;

namespace {

/// The one place that tells what the exception in flight means.
ComponentError ErrorInFlight(const std::string& source) {
    constexpr std::int32_t outOfMemory = 7;
    constexpr std::int32_t internalError = 51;
    try {
        throw;
    } catch (const ComponentError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return ComponentError(outOfMemory, source, "out of memory");
    } catch (const std::exception& error) {
        return ComponentError(internalError, source, error.what());
    } catch (...) {
        return ComponentError(internalError, source, "unknown failure");
    }
}

} // namespace

std::string ToolMain::FullProcName(std::string_view sProc) const {
    return m_sName + "." + std::string(sProc);
}

void ToolMain::ReportError(const ComponentError& error, std::string_view sProcName) {
    if (error.Number() == 0 || !m_oFramework) return;
    const EventRef report = NewEvent(event::ErrorMessage, 20, 9);
    AddText(report->Parameters(), parameter::ErrorDescription, error.Description());
    AddText(report->Parameters(), parameter::ErrorSource, error.Source());
    AddInteger(report->Parameters(), parameter::ErrorNumber, error.Number());
    AddText(report->Parameters(), parameter::ProcName, sProcName);
    m_oFramework->Router()->Send(NewEnvelope(arvon::MessageType::Event, listener::Shell, report->Xml()));
}

void ToolMain::ReportErrorInFlight(std::string_view sProc) {
    const std::string fullName = FullProcName(sProc);
    ReportError(ErrorInFlight(fullName), fullName);
}

ComponentError ToolMain::OwnError(std::int32_t number, std::string_view sProc,
                                  std::string description) const {
    return ComponentError(base::errors::ObjectErrorBase + number, FullProcName(sProc),
                          std::move(description));
}

// Diagnostics have no effect that anything may depend on.
void ToolMain::DebugTrace(std::string_view sProcName, std::string_view sMessage, bool bFlag) {
    if (!bFlag) return;
    std::string line(sProcName);
    line += sMessage;
    m_oServices.debugOutput->Write(line);
}

void ToolMain::AddBenchmark(std::string_view sMethod, double lLengthInCall, std::string_view sTypeName,
                            std::string_view sPars) {
    std::string text = "<BENCHMARK><OBJECT>";
    text += base::UpperCase(sTypeName);
    text += "</OBJECT><METHOD>";
    text += sMethod;
    text += "</METHOD>";
    text += sPars;
    text += "<LENGTH_IN_CALL>";
    text += base::Value(lLengthInCall).ToText();
    text += "</LENGTH_IN_CALL></BENCHMARK>";
    m_oBenchmark->Record(text);
}

} // namespace kvtm
