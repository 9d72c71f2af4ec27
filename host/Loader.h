#pragma once

#include "base/Collection.h"
#include "core/contract/Tool.h"
#include "core/contract/Tools.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
class FilePaths;
}

namespace arvon::host {

class Router;
class Settings;
class ToolRecords;

/// Loads a tool's shared library and lets its entry point make the tool's object. Throws ComponentError that
/// says what is wrong with the library. Libraries stay in the process: objects that came out of one may be
/// held anywhere.
std::shared_ptr<ITool> MakeTool(const std::filesystem::path& library, ISupport& support);

class LoadedTool final : public ILoadedTool {
public:
    LoadedTool(Trace& trace, model::LoadedTool names, std::string identifier, std::shared_ptr<ITool> tool)
        : trace_(trace), names_(std::move(names)), identifier_(std::move(identifier)),
          tool_(std::move(tool)) {}

    std::string Name() const override;
    std::string ProductDataKey() const override;

    const model::LoadedTool& Names() const noexcept { return names_; }
    const std::string& Identifier() const noexcept { return identifier_; }
    std::shared_ptr<ITool> TakeTool() noexcept { return std::move(tool_); }

private:
    Trace& trace_;
    model::LoadedTool names_;
    std::string identifier_; // of its record; empty where it has none
    std::shared_ptr<ITool> tool_;
};

class LoadedTools final : public ILoadedTools {
public:
    explicit LoadedTools(Trace& trace) : trace_(trace) {}

    std::size_t Count() const override;
    std::shared_ptr<ILoadedTool> Item(std::size_t position) const override;

    void Add(std::shared_ptr<LoadedTool> tool);
    void Remove(const LoadedTool& tool);
    /// By name, product data key or identifier (exact); null when there is none.
    std::shared_ptr<LoadedTool> Find(std::string_view name) const;
    /// By product data key in any letter case.
    std::shared_ptr<LoadedTool> FindByKey(std::string_view productDataKey) const;
    std::vector<model::LoadedTool> Snapshot() const;

private:
    Trace& trace_;
    base::Collection<std::shared_ptr<LoadedTool>> tools_;
};

/// Loads tools by the name, VREX or identifier of their record, or as a component "<name>.so" in the
/// component folder. Whatever goes wrong is a refusal, never an exception; ProblemOf tells why.
class Loader final : public IToolLoader {
public:
    struct Surroundings {
        Trace& trace;
        Router& router;
        ToolRecords& records;
        LoadedTools& loaded;
        Settings& settings;
        const platform::FilePaths& paths;
        ISupport& support;
        /// Gives a new tool its profile and key and loads it.
        std::function<bool(ITool& tool)> load;
    };
    explicit Loader(Surroundings surroundings) : host_(std::move(surroundings)) {}

    bool IsLoaded(std::string_view name) override;
    /// True at once for a tool that is loaded already.
    bool Load(std::string_view name, const std::shared_ptr<IMessageListener>& subscriber) override;

    /// Unloads a tool and takes it out of the loaded ones. Its listeners go with it.
    void Unload(const std::shared_ptr<LoadedTool>& tool);
    /// For good: nothing can be loaded from then on.
    void UnloadAll();
    /// By name, VREX or identifier, under whichever it is asked for.
    void Refuse(std::string_view name) { refused_.insert(std::string(name)); }
    std::string ProblemOf(std::string_view name) const;

private:
    struct Candidate {
        model::LoadedTool names;
        std::string identifier;
        std::string path; // of its library
    };
    /// What a name stands for: a record's tool, or else a component.
    Candidate Resolve(const std::string& name) const;
    void LoadOrThrow(const std::string& asked);
    void LoadTool(const Candidate& candidate);
    void Release(const std::shared_ptr<ITool>& tool);

    Surroundings host_;
    std::set<std::string, std::less<>> refused_;
    std::set<std::string, std::less<>> loading_; // names of their records
    bool closed_ = false;
    std::map<std::string, std::string, std::less<>> problems_;
};

} // namespace arvon::host
