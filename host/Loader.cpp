#include "host/Loader.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "host/Router.h"
#include "host/Settings.h"
#include "host/ToolRecords.h"
#include "platform/FilePaths.h"

#include <dlfcn.h>

#include <utility>

namespace arvon::host {

namespace {

[[noreturn]] void Refuse(const std::string& reason) {
    throw base::ComponentError(base::errors::InvalidCall, "Arvon110", reason);
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
        throw base::ComponentError(base::errors::FileNotFound, "Arvon110",
                                   "no tool library " + library.string());
    }
    // an absolute path, for a bare name would be looked for elsewhere
    void* handle = ::dlopen(std::filesystem::absolute(library).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) Refuse("not loadable: " + DynamicLinkerProblem());
    void* symbol = ::dlsym(handle, CreateToolSymbol);
    if (!symbol) Refuse(library.string() + " has no entry point " + CreateToolSymbol);
    const auto create = reinterpret_cast<CreateToolFunction>(symbol);
    std::shared_ptr<ITool> tool;
    create(&support, &tool);
    if (!tool) Refuse(library.string() + " made no tool");
    return tool;
}

// LoadedTool, LoadedTools
// ---------------------------------------------------------------------------------------

std::string LoadedTool::Name() const {
    trace_.Check("LoadedTool.Name");
    return names_.name;
}

std::string LoadedTool::ProductDataKey() const {
    trace_.Check("LoadedTool.ProductDataKey");
    return names_.key;
}

std::size_t LoadedTools::Count() const {
    trace_.Check("LoadedTools.Count");
    return tools_.Count();
}

std::shared_ptr<ILoadedTool> LoadedTools::Item(std::size_t position) const {
    trace_.Check("LoadedTools.Item");
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
    host_.trace.Call("Loader.Load", name, subscriber ? base::Value(subscriber->id()) : base::Value());
    if (host_.loaded.Find(name)) return true;
    const std::string key(name);
    std::string reason;
    bool entered = false;
    try {
        if (refused_.contains(name)) Refuse("refused");
        entered = loading_.insert(key).second;
        if (!entered) Refuse("is being loaded already");
        LoadOrThrow(key);
    } catch (const base::ComponentError& error) {
        reason = error.Description();
    } catch (const std::exception& error) {
        reason = error.what();
    } catch (...) {
        reason = "failed for an unknown reason";
    }
    if (entered) loading_.erase(key);
    if (reason.empty()) {
        problems_.erase(key);
        return true;
    }
    problems_.insert_or_assign(key, reason);
    host_.trace.Problem("tool \"" + key + "\" was not loaded: " + reason);
    return false;
}

void Loader::LoadOrThrow(const std::string& name) {
    std::shared_ptr<ToolRecord> record = host_.records.Find(name);
    if (!record) record = host_.records.FindById(name);
    std::string path;
    if (record) {
        path = record->Text(ToolField::Path);
        if (path.empty()) Refuse("its record names no path");
    } else {
        if (!IsFileName(name)) Refuse("no record and no component of that name");
        path = host_.settings.ComponentFolder() + "\\" + name + ".so";
    }
    model::LoadedTool names{name, name};
    std::string identifier;
    if (record) {
        names = {record->Text(ToolField::Name), record->Text(ToolField::Vrex)};
        if (names.name.empty()) names.name = name;
        if (names.key.empty()) names.key = names.name;
        identifier = record->Text(ToolField::Identifier);
    }
    std::shared_ptr<ITool> tool = MakeTool(host_.paths.ToSystem(path), host_.support);
    const auto takeBack = [&] {
        if (const auto listener = std::dynamic_pointer_cast<IMessageListener>(tool))
            host_.router.Unregister(listener.get());
        host_.router.Retire(tool);
    };
    try {
        if (!host_.load(*tool)) Refuse("declined to load");
        host_.loaded.Add(
            std::make_shared<LoadedTool>(host_.trace, std::move(names), std::move(identifier), tool));
    } catch (...) {
        takeBack();
        throw;
    }
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
    if (const auto listener = std::dynamic_pointer_cast<IMessageListener>(tool))
        host_.router.Unregister(listener.get());
    host_.router.Retire(tool);
}

void Loader::UnloadAll() {
    for (const model::LoadedTool& names : host_.loaded.Snapshot())
        if (const auto tool = host_.loaded.Find(names.name)) Unload(tool);
}

std::string Loader::ProblemOf(std::string_view name) const {
    const auto found = problems_.find(name);
    return found == problems_.end() ? std::string() : found->second;
}

} // namespace arvon::host
