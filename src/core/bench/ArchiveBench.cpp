// Archives of 1,000 to 100,000 objects with ten properties each, built and written, read and taken apart, beside the
// XML parser alone with the same document.

#include "value/Archive.h"
#include "value/MemorySerializer.h"
#include "value/Serializer.h"

#include <benchmark/benchmark.h>
#include <tinyxml.h>

#include <filesystem>
#include <memory>
#include <string>

using namespace tesseralis;

namespace {
constexpr int c_propertyCount = 10;
constexpr std::size_t c_sizeLimit = 1 << 30;

std::string const s_filename = (std::filesystem::temp_directory_path() / "tesseralis-archive-bench.xml").string();

void build(Archive & archive, benchmark::State const & state)
{
    ArchiveElement root = ArchiveElement(archive).store("tesseralis");
    for (int i = 0; i < state.range(0); ++i) {
        ArchiveElement object = root.store("viewport");
        object.SetAttribute("name", "viewport" + std::to_string(i));
        for (int k = 0; k < c_propertyCount; ++k) {
            ArchiveElement property = object.store("property");
            property.SetAttribute("name", "property" + std::to_string(k));
            property.SetAttribute("type", "float");
            property.SetValue(std::to_string(i * k));
        }
    }
}

TiXmlElement * addElement(TiXmlNode & parent, char const * name)
{
    auto * const element = new TiXmlElement(name);
    parent.LinkEndChild(element);
    return element;
}

void build(TiXmlDocument & document, benchmark::State const & state)
{
    TiXmlElement * const root = addElement(document, "tesseralis");
    for (int i = 0; i < state.range(0); ++i) {
        TiXmlElement * const object = addElement(*root, "viewport");
        object->SetAttribute("name", "viewport" + std::to_string(i));
        for (int k = 0; k < c_propertyCount; ++k) {
            TiXmlElement * const property = addElement(*object, "property");
            property->SetAttribute("name", "property" + std::to_string(k));
            property->SetAttribute("type", "float");
            auto text = std::make_unique<TiXmlText>(std::to_string(i * k));
            text->SetCDATA(true);
            property->LinkEndChild(text.release());
        }
    }
}

void takeApart(ArchiveElement element)
{
    while (element.IsRetrievable()) {
        ArchiveElement const child = element.retrieve();
        benchmark::DoNotOptimize(child.GetAttribute("name"));
        benchmark::DoNotOptimize(child.GetValue());
        takeApart(child);
    }
}

void parserAloneBuildsAndWrites(benchmark::State & state)
{
    for (auto _ : state) {
        TiXmlDocument document;
        build(document, state);
        document.SaveFile(s_filename);
    }
}

void archiveIsBuiltAndWritten(benchmark::State & state)
{
    Serializer serializer(s_filename);
    serializer.SetSizeLimit(c_sizeLimit);
    for (auto _ : state) {
        Archive archive;
        build(archive, state);
        serializer.save(archive);
    }
    state.SetComplexityN(state.range(0));
}

void archiveIsBuiltAndPrinted(benchmark::State & state)
{
    MemorySerializer serializer;
    serializer.SetSizeLimit(c_sizeLimit);
    for (auto _ : state) {
        Archive archive;
        build(archive, state);
        std::string text;
        serializer.save(text, archive);
    }
}

void parserAloneReads(benchmark::State & state)
{
    TiXmlDocument source;
    build(source, state);
    source.SaveFile(s_filename);
    for (auto _ : state) {
        TiXmlDocument document;
        document.LoadFile(s_filename);
    }
}

void archiveIsReadAndTakenApart(benchmark::State & state)
{
    Archive source;
    build(source, state);
    Serializer serializer(s_filename);
    serializer.SetSizeLimit(c_sizeLimit);
    serializer.save(source);
    for (auto _ : state) {
        Archive archive;
        serializer.load(archive);
        takeApart(ArchiveElement(archive));
    }
    state.SetComplexityN(state.range(0));
}

void archiveIsCopied(benchmark::State & state)
{
    Archive source;
    build(source, state);
    for (auto _ : state) {
        Archive const copy(source);
        benchmark::DoNotOptimize(copy.GetRoot());
    }
}
} // namespace

#define SIZES ->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)
BENCHMARK(parserAloneBuildsAndWrites) SIZES;
BENCHMARK(archiveIsBuiltAndWritten) SIZES->Complexity();
BENCHMARK(archiveIsBuiltAndPrinted) SIZES;
BENCHMARK(parserAloneReads) SIZES;
BENCHMARK(archiveIsReadAndTakenApart) SIZES->Complexity();
BENCHMARK(archiveIsCopied) SIZES;
