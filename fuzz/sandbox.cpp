// The sample drawing of the fuzz targets, and what must hold of one that was spoiled.
#include "sandbox.h"

#include "judge.h"
#include "support/drawing_support.h"

namespace fenmark::fuzz {

std::string samplePackage() {
    drawing::Drawing drawing;
    drawing::addSmallImport(drawing, 0);
    drawing::addSmallImport(drawing, 1);
    drawing::Import import;
    import.fileName = "測量0.sim";
    import.path = "/survey/測量0.sim";
    import.time = "2026-01-31T09:15:00Z";
    import.firstId = 1;
    import.lastId = drawing.lastId();
    drawing.addImport(import);
    const std::string path = sandbox().at("sample.gpkg");
    drawing::DrawingStore store;
    require(static_cast<bool>(store.save(path, drawing)), "the sample is saved");
    const std::string bytes = Sandbox::read(path);
    std::filesystem::remove(path);
    return bytes;
}

void judgePackage(const std::string& path) {
    const std::string before = Sandbox::read(path);
    drawing::Drawing drawing;
    drawing::DrawingStore store;
    const Outcome opened = store.open(path, drawing);
    require(Sandbox::read(path) == before, "opening changes nothing");
    if (!opened) {
        require(!opened.message.empty(), "a failure is reported");
        return;
    }
    for (const drawing::StoreNote& note : store.notes()) {
        require(!drawing::noteText(note).empty(), "a note has words");
    }
    judgeExports(drawing);
    drawing::Drawing appended;
    drawing::DrawingStore writer;
    if (!writer.open(path, appended)) {
        require(false, "what opened once opens again");
    }
    drawing::addSmallImport(appended, 7);
    const std::string wanted = drawing::describe(appended);
    if (const Outcome saved = writer.save(path, appended); !saved) {
        require(!saved.message.empty(), "a failure is reported");
        require(Sandbox::read(path) == before, "a save that fails changes nothing");
        return;
    }
    drawing::Drawing again;
    drawing::DrawingStore reader;
    const Outcome reopened = reader.open(path, again);
    require(static_cast<bool>(reopened), "what was saved opens: " + reopened.message.english);
    require(drawing::describe(again) == wanted, "what was saved reads back");
}

} // namespace fenmark::fuzz
