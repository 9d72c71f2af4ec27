#include "host/Loader.h"

#include "base/Text.h"
#include "host/Errors.h"
#include "host/Router.h"
#include "host/Settings.h"
#include "host/ToolRecords.h"
#include "platform/FilePaths.h"

#include <dlfcn.h>

#include <utility>

namespace arvon::host {

namespace {

[[noreturn]] void RaiseRefusal(const std::string& reason) {
    Raise(base::errors::InvalidCall, reason);
}

std::string DynamicLinkerProblem() {
    const char* problem = ::dlerror();
    return problem ? problem : "unknown reason";
}

bool IsFileName(std::string_view name) {
    return !name.empty() && name.find_first_of("/\\:") == std::string_view::npos && name.front() != '.';
}

} // namespace

std::shared_ptr<ITool> MakeTool(const std::filesystem::path& library, ISupport& support) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(library, ignored)) {
        Raise(base::errors::FileNotFound, "no tool library " + library.string());
    }
    // an absolute path, for a bare name would be looked for elsewhere
    void* handle = ::dlopen(std::filesystem::absolute(library).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) RaiseRefusal("not loadable: " + DynamicLinkerProblem());
    void* symbol = ::dlsym(handle, CreateToolSymbol);
    if (!symbol) RaiseRefusal(library.string() + " has no entry point " + CreateToolSymbol);
    const auto create = reinterpret_cast<CreateToolFunction>(symbol);
    std::shared_ptr<ITool> tool;
    try {
        create(&support, &tool);
    } catch (const std::exception& error) {
        RaiseRefusal(library.string() + " made no tool: " + error.what());
    } catch (...) {
        RaiseRefusal(library.string() + " made no tool");
    }
    if (!tool) RaiseRefusal(library.string() + " made no tool");
    return tool;
}

// LoadedTool, LoadedTools
// ---------------------------------------------------------------------------------------

std::string LoadedTool::Name() const {
    trace_.Read("LoadedTool.Name", names_.name);
    return names_.name;
}

std::string LoadedTool::ProductDataKey() const {
    trace_.Read("LoadedTool.ProductDataKey", names_.name);
    return names_.key;
}

std::size_t LoadedTools::Count() const {
    trace_.Read("LoadedTools.Count");
    return tools_.Count();
}

std::shared_ptr<ILoadedTool> LoadedTools::Item(std::size_t position) const {
    trace_.Read("LoadedTools.Item", position);
    return tools_.Item(position);
}

void LoadedTools::Add(std::shared_ptr<LoadedTool> tool) {
    const std::string key = tool->Names().name;
    tools_.Add(std::move(tool), key);
    trace_.Changed(ModelPart::Loaded);
}

void LoadedTools::Remove(const LoadedTool& tool) {
    if (tools_.Remove(std::string_view(tool.Names().name))) trace_.Changed(ModelPart::Loaded);
}

std::shared_ptr<LoadedTool> LoadedTools::Find(std::string_view name) const {
    if (name.empty()) return nullptr;
    if (const std::shared_ptr<LoadedTool>* found = tools_.Find(name)) return *found;
    for (const auto& tool : tools_)
        if (tool->Names().key == name || tool->Identifier() == name) return tool;
    return nullptr;
}

std::shared_ptr<LoadedTool> LoadedTools::FindByKey(std::string_view productDataKey) const {
    for (const auto& tool : tools_)
        if (base::EqualIgnoringCase(tool->Names().key, productDataKey)) return tool;
    return nullptr;
}

std::vector<model::LoadedTool> LoadedTools::Snapshot() const {
    std::vector<model::LoadedTool> rows;
    for (const auto& tool : tools_)
        rows.push_back(tool->Names());
    return rows;
}

// Loader
// --------------------------------------------------------------------------------------------------------

bool Loader::IsLoaded(std::string_view name) {
    host_.trace.Call("Loader.IsLoaded", name);
    return host_.loaded.Find(name) != nullptr;
}

bool Loader::Load(std::string_view name, const std::shared_ptr<IMessageListener>& subscriber) {
    host_.trace.Call("Loader.Load", name,
                     [&] { return subscriber ? base::Value(subscriber->id()) : base::Value(); });
    if (host_.loaded.Find(name)) return true;
    const std::string asked(name);
    std::string reason;
    try {
        LoadOrThrow(asked);
    } catch (const std::exception& error) {
        reason = error.what();
        if (reason.empty()) reason = "failed without a description";
    } catch (...) {
        reason = "failed for an unknown reason";
    }
    if (reason.empty()) {
        problems_.erase(asked);
        return true;
    }
    problems_.insert_or_assign(asked, reason);
    host_.trace.Problem("tool \"" + asked + "\" was not loaded: " + reason);
    return false;
}

Loader::Candidate Loader::Resolve(const std::string& name) const {
    std::shared_ptr<ToolRecord> record = host_.records.Find(name);
    if (!record) record = host_.records.FindById(name);
    if (!record) {
        if (!IsFileName(name)) RaiseRefusal("no record and no component of that name");
        return {{name, name}, {}, host_.settings.ComponentFolder() + "\\" + name + ".so"};
    }
    Candidate candidate{{record->Text(ToolField::Name), record->Text(ToolField::Vrex)},
                        record->Text(ToolField::Identifier),
                        record->Text(ToolField::Path)};
    if (candidate.names.name.empty()) candidate.names.name = name;
    if (candidate.names.key.empty()) candidate.names.key = candidate.names.name;
    return candidate;
}

void Loader::LoadOrThrow(const std::string& asked) {
    if (closed_) RaiseRefusal("the host is closing");
    if (refused_.contains(asked)) RaiseRefusal("refused");
    const Candidate candidate = Resolve(asked);
    const std::string& name = candidate.names.name;
    for (const std::string* alias : {&name, &candidate.names.key, &candidate.identifier})
        if (refused_.contains(*alias)) RaiseRefusal("refused");
    if (const auto present = host_.loaded.Find(name); present && present->Names().name == name)
        RaiseRefusal("another tool of that name is loaded");
    if (candidate.path.empty()) RaiseRefusal("its record names no path");
    if (!loading_.insert(name).second) RaiseRefusal("is being loaded already");
    try {
        LoadTool(candidate);
    } catch (...) {
        loading_.erase(name);
        throw;
    }
    loading_.erase(name);
}

void Loader::LoadTool(const Candidate& candidate) {
    const std::shared_ptr<ITool> tool = MakeTool(host_.paths.ToSystem(candidate.path), host_.support);
    try {
        if (!host_.load(*tool)) RaiseRefusal("declined to load");
    } catch (...) {
        Release(tool);
        throw;
    }
    host_.loaded.Add(std::make_shared<LoadedTool>(host_.trace, candidate.names, candidate.identifier, tool));
}

void Loader::Release(const std::shared_ptr<ITool>& tool) {
    if (const auto listener = std::dynamic_pointer_cast<IMessageListener>(tool))
        host_.router.Unregister(listener.get());
    host_.router.Retire(tool);
}

void Loader::Unload(const std::shared_ptr<LoadedTool>& loaded) {
    const std::shared_ptr<ITool> tool = loaded->TakeTool();
    host_.loaded.Remove(*loaded);
    if (!tool) return;
    try {
        tool->Unload();
    } catch (const std::exception& error) {
        host_.trace.Problem("tool \"" + loaded->Names().name + "\" failed to unload: " + error.what());
    } catch (...) {
        host_.trace.Problem("tool \"" + loaded->Names().name + "\" failed to unload");
    }
    Release(tool);
}

void Loader::UnloadAll() {
    closed_ = true;
    for (const model::LoadedTool& names : host_.loaded.Snapshot())
        if (const auto tool = host_.loaded.Find(names.name)) Unload(tool);
}

std::string Loader::ProblemOf(std::string_view name) const {
    const auto found = problems_.find(name);
    return found == problems_.end() ? std::string() : found->second;
}

} // namespace arvon::host
