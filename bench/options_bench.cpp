// Options read and written, side by side with other stores of settings that are installed.

#include "bench/LoadedHost.h"
#include "bench/Memory.h"
#include "bench/Ratios.h"
#include "bench/Requests.h"
#include "bench/options_peer.h"
#include "options/OptionAddress.h"
#include "options/OptionsDocument.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <memory>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using bench::OptionsPeer;
using kvtm::OptionsDocument;

constexpr int optionsOfATool = 20;

std::string ToolId(int tool) {
    return "Tool" + std::to_string(10000 + tool);
}
std::string OptionName(int option) {
    return "cmbNumberOfOption" + std::to_string(10 + option);
}
std::string ValueOf(int tool, int option) {
    return "value " + std::to_string(100000 + tool * optionsOfATool + option) + " of the option";
}

std::string DocumentOf(int tools) {
    std::string text =
        "<Options><ToolOptions><Tool ID=\"SOV02\"><Option><Name>cmbToolSortKey</Name><Value/></Option>"
        "<Option><Name>optToolSortOrder</Name><Value/></Option></Tool>";
    for (int tool = 0; tool < tools; ++tool) {
        text += "<Tool ID=\"" + ToolId(tool) + "\">";
        for (int option = 0; option < optionsOfATool; ++option) {
            text += "<Option><Name>" + OptionName(option) + "</Name><Value>" + ValueOf(tool, option) +
                    "</Value></Option>";
        }
        text += "</Tool>";
    }
    return text + "</ToolOptions></Options>";
}

/// Options to read: few, spread over the document, so that what is measured is the look-up; or a different
/// one every time, so that it is the memory as well.
struct Key {
    std::string tool, option;
};
std::vector<Key> Keys(int tools, bool areSpread) {
    std::vector<Key> keys;
    std::mt19937 random(1);
    const int count = areSpread ? 16 : std::min(tools * optionsOfATool, 65536);
    for (int i = 0; i < count; ++i) {
        const int tool =
            areSpread ? tools * i / count : static_cast<int>(random() % static_cast<unsigned>(tools));
        keys.push_back({ToolId(tool), OptionName(static_cast<int>(random() % optionsOfATool))});
    }
    return keys;
}

/// Runs `read` over the keys, round and round; what a store makes at its first read is made before.
template <class Read> void ReadInTurn(benchmark::State& state, const std::vector<Key>& keys, Read&& read) {
    std::size_t next = 0;
    read(keys[next]);
    for (auto _ : state) {
        std::size_t length = read(keys[next]);
        benchmark::DoNotOptimize(length);
        if (++next == keys.size()) next = 0;
    }
}

void ReadOurs(benchmark::State& state, int tools, bool areSpread) {
    OptionsDocument document;
    document.LoadText(DocumentOf(tools));
    ReadInTurn(state, Keys(tools, areSpread), [&](const Key& key) {
        std::string text;
        document.ReadValue(key.tool, key.option, text);
        return text.size();
    });
}

void ReadByPath(benchmark::State& state, int tools) {
    base::XmlDocument document;
    document.LoadText(DocumentOf(tools));
    ReadInTurn(state, Keys(tools, true), [&](const Key& key) {
        return document.SelectSingle(kvtm::optionAddress::Of(key.tool, key.option) + "/Value").Text().size();
    });
}

struct Peer {
    const char* name;
    OptionsPeer* (*make)();
};
const Peer peers[] = {
#ifdef KVTM_BENCH_GLIB
    {"GKeyFile", NewGKeyFile},
#endif
#ifdef KVTM_BENCH_QT
    {"QSettings", NewQSettings},
#endif
#ifdef KVTM_BENCH_KCONFIG
    {"KConfig", NewKConfig},
#endif
    {nullptr, nullptr}};

std::unique_ptr<OptionsPeer> Filled(const Peer& peer, const fs::path& file, int tools) {
    std::unique_ptr<OptionsPeer> store(peer.make());
    store->Open(file);
    for (int tool = 0; tool < tools; ++tool) {
        for (int option = 0; option < optionsOfATool; ++option)
            store->Put(ToolId(tool), OptionName(option), ValueOf(tool, option));
    }
    return store;
}

void ReadPeer(benchmark::State& state, const Peer& peer, int tools, bool areSpread) {
    const kvtm::test::TestInstallation folder;
    const auto store = Filled(peer, folder.Folder() / "peer", tools);
    ReadInTurn(state, Keys(tools, areSpread),
               [&](const Key& key) { return store->Read(key.tool, key.option); });
}

std::string ReadRequest(int tools) {
    return bench::RequestText("GetOptionValue",
                              {{"ToolID", ToolId(tools / 2)}, {"OptionName", OptionName(7)}});
}

void BareParse(benchmark::State& state) {
    bench::BareParse(state, ReadRequest(1000));
}

void ReadByRequest(benchmark::State& state) {
    constexpr int tools = 1000;
    const bench::LoadedHost loaded(DocumentOf(tools));
    const std::string text = ReadRequest(tools);
    for (auto _ : state) {
        std::string reply = bench::Send(*loaded.host, text);
        if (reply.empty() || reply == "False") state.SkipWithError("not read");
    }
}

class Deaf final : public arvon::IMessageListener {
public:
    std::string id() const override { return {}; }
    std::string ReceiveMessage(const std::shared_ptr<arvon::IMessage>&) override { return {}; }
};

void WriteByRequest(benchmark::State& state, int tools, int subscribers) {
    const bench::LoadedHost loaded(DocumentOf(tools));
    for (int i = 0; i < subscribers; ++i) {
        const std::string id = "S" + std::to_string(i);
        loaded.tool->AddSubscriber(id);
        loaded.host->Framework()->RegisterListener(std::make_shared<Deaf>(), id);
    }
    const auto request = [&](const char* value) {
        return bench::RequestText(
            "SetOptionValue",
            {{"ToolID", ToolId(tools / 2)}, {"OptionName", OptionName(7)}, {"OptionValue", value}});
    };
    const std::string texts[] = {request("ON"), request("a longer value")};
    std::size_t turn = 0;
    const auto write = [&] {
        if (bench::Send(*loaded.host, texts[turn++ % 2]) != "True") state.SkipWithError("not written");
    };
    write(); // makes index and text
    for (auto _ : state)
        write();
}

void Check(bool isDone) {
    if (!isDone) std::abort();
}

/// The least that a durable write of the same bytes costs.
void WriteBytes(benchmark::State& state, int tools) {
    const kvtm::test::TestInstallation installation;
    const std::string text = DocumentOf(tools);
    const fs::path folder = installation.File("Arvon"), file = folder / "OPTIONS.XML", fresh = folder / "new";
    for (auto _ : state) {
        const int out = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        Check(::write(out, text.data(), text.size()) == static_cast<ssize_t>(text.size()));
        Check(::fsync(out) == 0 && ::close(out) == 0);
        Check(::rename(fresh.c_str(), file.c_str()) == 0);
        const int in = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        Check(::fsync(in) == 0 && ::close(in) == 0);
    }
    state.counters["bytes"] = static_cast<double>(text.size());
}

void WritePeer(benchmark::State& state, const Peer& peer, int tools) {
    const kvtm::test::TestInstallation folder;
    const auto store = Filled(peer, folder.Folder() / "peer", tools);
    store->Save();
    int turn = 0;
    for (auto _ : state) {
        store->Put(ToolId(tools / 2), OptionName(7), ++turn % 2 ? "ON" : "a longer value");
        store->Save();
    }
}

/// The part of a write that is no input or output: the change, the pricing rules' look-ups, the text.
void MakeText(benchmark::State& state, int tools) {
    OptionsDocument document;
    document.LoadText(DocumentOf(tools));
    document.Text();
    int turn = 0;
    for (auto _ : state) {
        const base::XmlNode option = document.Option(ToolId(tools / 2), OptionName(7));
        document.SetText(option.SelectSingle("Value"), ++turn % 2 ? "ON" : "a longer value");
        benchmark::DoNotOptimize(document.Text());
    }
}

/// Everything that a document held ready costs: tree, index and kept text.
void HoldReady(benchmark::State& state, int tools) {
    const std::string text = DocumentOf(tools);
    for (auto _ : state) {
        const std::size_t before = bench::HeapBytes();
        auto document = std::make_unique<OptionsDocument>();
        document->LoadText(text);
        std::string value;
        document->ReadValue(ToolId(1), OptionName(1), value);
        document->HasSoundSets();
        document->SetText(document->Option(ToolId(1), OptionName(1)).SelectSingle("Value"), "changed");
        document->Text();
        const auto bytes = static_cast<double>(bench::HeapBytes() - before);
        state.counters["of_file"] = bytes / static_cast<double>(text.size());
        state.counters["index_an_option"] =
            static_cast<double>(document->IndexBytes()) / (tools * optionsOfATool);
    }
}

std::string Name(const char* what, const std::string& who, int tools) {
    return std::string(what) + "/" + who + "/" + std::to_string(tools);
}

std::string Of(int tools) {
    return ", " + std::to_string(tools) + " tools";
}

void RegisterReads(std::vector<bench::Goal>& goals) {
    struct Pattern {
        const char *name, *what;
        bool areSpread;
    };
    static constexpr Pattern patterns[] = {{"Read", "read", true}, {"ReadAnywhere", "read anywhere", false}};
    for (const Pattern& pattern : patterns) {
        for (const int tools : {10, 100, 1000, 10000}) {
            const std::string ours = Name(pattern.name, "ours", tools);
            const int repetitions = tools < 10000 ? 9 : 3; // filling the largest takes long
            benchmark::RegisterBenchmark(ours.c_str(), ReadOurs, tools, pattern.areSpread)
                ->Repetitions(repetitions);
            for (const Peer* peer = peers; peer->name; ++peer) {
                const std::string theirs = Name(pattern.name, peer->name, tools);
                benchmark::RegisterBenchmark(theirs.c_str(), ReadPeer, *peer, tools, pattern.areSpread)
                    ->Repetitions(repetitions);
                goals.push_back(bench::Ratio(pattern.what + (" : " + std::string(peer->name)) + Of(tools),
                                             ours, theirs, 1.0));
            }
        }
    }
    goals.push_back(bench::Ratio("read, 10,000 tools : 10 tools", "Read/ours/10000", "Read/ours/10", 1.5));

    benchmark::RegisterBenchmark("Read/XPath/1000", ReadByPath, 1000);
    goals.push_back(bench::Ratio("read : libxml2's XPath, 1000 tools", "Read/ours/1000", "Read/XPath/1000"));
    benchmark::RegisterBenchmark("Request/parse", BareParse);
    benchmark::RegisterBenchmark("Request/GetOptionValue", ReadByRequest);
    goals.push_back(bench::Ratio("whole request GetOptionValue : bare parse of its text",
                                 "Request/GetOptionValue", "Request/parse", 2.0));
}

void RegisterWrites(std::vector<bench::Goal>& goals) {
    const auto add = [](const std::string& name, auto&&... what) {
        benchmark::RegisterBenchmark(name.c_str(), what...)->UseRealTime()->Unit(benchmark::kMillisecond);
    };
    for (const int tools : {10, 100, 1000}) {
        const std::string bytes = Name("Write", "bytes", tools);
        add(bytes, WriteBytes, tools);
        benchmark::RegisterBenchmark(Name("MakeText", "ours", tools).c_str(), MakeText, tools);
        for (const int subscribers : {0, 1, 100}) {
            const std::string told = std::to_string(subscribers);
            const std::string ours = Name("Write", told + "subscribers", tools);
            add(ours, WriteByRequest, tools, subscribers);
            goals.push_back(
                bench::Ratio("write, " + told + " told : the bytes alone" + Of(tools), ours, bytes, 1.3));
        }
        for (const Peer* peer = peers; peer->name; ++peer) {
            const std::string theirs = Name("Write", peer->name, tools);
            add(theirs, WritePeer, *peer, tools);
            goals.push_back(bench::Ratio(peer->name + (" : the bytes alone" + Of(tools)), theirs, bytes));
        }
    }
}

void RegisterMemory(std::vector<bench::Goal>& goals) {
    for (const int tools : {10, 100, 1000, 10000}) {
        const std::string name = "HoldReady/" + std::to_string(tools);
        benchmark::RegisterBenchmark(name.c_str(), HoldReady, tools)->Iterations(1)->Repetitions(1);
        goals.push_back(bench::Counter("memory held ready : file" + Of(tools), name + ":of_file", 12, "x"));
        goals.push_back(
            bench::Counter("index, bytes an option" + Of(tools), name + ":index_an_option", 64, "B"));
    }
}

} // namespace

int main(int argc, char** argv) {
    std::vector<bench::Goal> goals;
    RegisterReads(goals);
    RegisterWrites(goals);
    RegisterMemory(goals);
    return bench::RunAndCompare(argc, argv, goals);
}
