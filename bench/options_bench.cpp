// Options read and written, side by side with other stores of settings that are installed.

#include "bench/Ratios.h"
#include "bench/options_peer.h"
#include "core/ToolMain.h"
#include "host/ReferenceHost.h"
#include "options/OptionAddress.h"
#include "options/OptionsDocument.h"
#include "platform/Files.h"
#include "tests/support/TestInstallation.h"

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <cstdio>
#include <fcntl.h>
#include <malloc.h>
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

/// Runs `read` over the keys, round and round.
template <class Read> void ReadInTurn(benchmark::State& state, const std::vector<Key>& keys, Read&& read) {
    std::size_t next = 0;
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

/// The tool manager loaded on a document of so many tools.
struct Loaded {
    explicit Loaded(int tools) {
        installation.Write("Arvon/OPTIONS.XML", DocumentOf(tools));
        host = std::make_unique<arvon::host::ReferenceHost>(installation.Folder());
        tool = kvtm::ToolMain::Create(host->Support(), platform::Services::Create());
        host->Attach(tool);
        host->Load();
    }
    kvtm::test::TestInstallation installation;
    std::unique_ptr<arvon::host::ReferenceHost> host;
    std::shared_ptr<kvtm::ToolMain> tool;
};

std::string RequestText(std::string_view type,
                        const std::vector<std::pair<std::string, std::string>>& parameters) {
    std::string text = "<Request Type=\"" + std::string(type) + "\" Mode=\"0\"><Parameters>";
    for (const auto& [name, value] : parameters)
        text += "<Parameter Name=\"" + name + "\" Type=\"2\">" + value + "</Parameter>";
    return text + "</Parameters></Request>";
}

std::string ReadRequest(int tools) {
    return RequestText("GetOptionValue", {{"ToolID", ToolId(tools / 2)}, {"OptionName", OptionName(7)}});
}

void BareParse(benchmark::State& state) {
    const std::string text = ReadRequest(1000);
    for (auto _ : state) {
        xmlDoc* document =
            xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_NONET);
        benchmark::DoNotOptimize(document);
        xmlFreeDoc(document);
    }
}

void ReadByRequest(benchmark::State& state) {
    constexpr int tools = 1000;
    const Loaded loaded(tools);
    const std::string text = ReadRequest(tools);
    for (auto _ : state) {
        std::string reply = loaded.host->SendMessage(2, text);
        if (reply.empty() || reply == "False") state.SkipWithError("not read");
    }
}

class Deaf final : public arvon::IMessageListener {
public:
    std::string id() const override { return {}; }
    std::string ReceiveMessage(const std::shared_ptr<arvon::IMessage>&) override { return {}; }
};

void WriteByRequest(benchmark::State& state, int tools, int subscribers) {
    const Loaded loaded(tools);
    for (int i = 0; i < subscribers; ++i) {
        const std::string id = "S" + std::to_string(i);
        loaded.tool->AddSubscriber(id);
        loaded.host->Framework()->RegisterListener(std::make_shared<Deaf>(), id);
    }
    const auto request = [&](const char* value) {
        return RequestText(
            "SetOptionValue",
            {{"ToolID", ToolId(tools / 2)}, {"OptionName", OptionName(7)}, {"OptionValue", value}});
    };
    const std::string texts[] = {request("ON"), request("a longer value")};
    std::size_t turn = 0;
    for (auto _ : state) {
        if (loaded.host->SendMessage(2, texts[turn++ % 2]) != "True") state.SkipWithError("not written");
    }
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

std::size_t BytesInUse() {
    const struct mallinfo2 memory = ::mallinfo2();
    return memory.uordblks + memory.hblkhd;
}

/// Everything that a document held ready costs: tree, index and kept text.
void PrintMemory() {
    std::printf("\n%-40s %12s %12s %8s %8s\n", "memory of a document held ready", "file bytes", "bytes",
                "ratio", "aim");
    for (const int tools : {10, 100, 1000, 10000}) {
        const std::string text = DocumentOf(tools);
        const std::size_t before = BytesInUse();
        auto document = std::make_unique<OptionsDocument>();
        document->LoadText(text);
        std::string value;
        document->ReadValue(ToolId(1), OptionName(1), value);
        document->HasSoundSets();
        document->SetText(document->Option(ToolId(1), OptionName(1)).SelectSingle("Value"), "changed");
        document->Text();
        const std::size_t bytes = BytesInUse() - before;
        std::printf("%6d tools x %-26d %12zu %12zu %8.2f %8.2f\n", tools, optionsOfATool, text.size(), bytes,
                    static_cast<double>(bytes) / static_cast<double>(text.size()), 12.0);
        std::printf("%-40s %12s %12zu bytes an option\n", "  of that the index", "",
                    document->IndexBytes() / static_cast<std::size_t>(tools * optionsOfATool));
    }
}

std::string Name(const char* what, const std::string& who, int tools) {
    return std::string(what) + "/" + who + "/" + std::to_string(tools);
}

std::vector<bench::Ratio> RegisterReads() {
    std::vector<bench::Ratio> ratios;
    for (const int tools : {10, 100, 1000, 10000}) {
        const std::string ours = Name("Read", "ours", tools),
                          scattered = Name("ReadScattered", "ours", tools);
        benchmark::RegisterBenchmark(ours.c_str(), ReadOurs, tools, true);
        benchmark::RegisterBenchmark(scattered.c_str(), ReadOurs, tools, false);
        for (const Peer* peer = peers; peer->name; ++peer) {
            const std::string name = Name("Read", peer->name, tools);
            const std::string nameScattered = Name("ReadScattered", peer->name, tools);
            benchmark::RegisterBenchmark(name.c_str(), ReadPeer, *peer, tools, true);
            benchmark::RegisterBenchmark(nameScattered.c_str(), ReadPeer, *peer, tools, false);
            ratios.push_back({ours + " : " + peer->name, ours, name, 1.0});
            ratios.push_back({scattered + " : " + peer->name, scattered, nameScattered, 1.0});
        }
        if (tools > 1000) continue;
        const std::string path = Name("Read", "XPath", tools);
        benchmark::RegisterBenchmark(path.c_str(), ReadByPath, tools);
        ratios.push_back({ours + " : XPath", ours, path, 1.0});
    }
    ratios.push_back({"Read/ours: 10000 tools : 10 tools", "Read/ours/10000", "Read/ours/10", 1.5});
    benchmark::RegisterBenchmark("Request/parse", BareParse);
    benchmark::RegisterBenchmark("Request/GetOptionValue", ReadByRequest);
    ratios.push_back(
        {"GetOptionValue : parse of its message", "Request/GetOptionValue", "Request/parse", 2.0});
    return ratios;
}

std::vector<bench::Ratio> RegisterWrites() {
    std::vector<bench::Ratio> ratios;
    for (const int tools : {10, 100, 1000}) {
        const std::string bytes = Name("Write", "bytes", tools);
        benchmark::RegisterBenchmark(bytes.c_str(), WriteBytes, tools)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(Name("MakeText", "ours", tools).c_str(), MakeText, tools);
        for (const int subscribers : {0, 1, 100}) {
            const std::string ours = Name("Write", std::to_string(subscribers) + "subscribers", tools);
            benchmark::RegisterBenchmark(ours.c_str(), WriteByRequest, tools, subscribers)
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
            ratios.push_back({ours + " : bytes", ours + "/real_time", bytes + "/real_time", 1.3});
        }
        for (const Peer* peer = peers; peer->name; ++peer) {
            const std::string name = Name("Write", peer->name, tools);
            benchmark::RegisterBenchmark(name.c_str(), WritePeer, *peer, tools)
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
            ratios.push_back({name + " : bytes", name + "/real_time", bytes + "/real_time", 0});
        }
    }
    return ratios;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<bench::Ratio> ratios = RegisterReads();
    for (bench::Ratio& ratio : RegisterWrites())
        ratios.push_back(std::move(ratio));
    const int result = bench::RunAndCompare(argc, argv, ratios);
    PrintMemory();
    return result;
}
