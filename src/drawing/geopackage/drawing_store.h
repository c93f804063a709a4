// A drawing on disk: a GeoPackage, read and written through SQLite alone.
//
// Opening reads and changes nothing, works in a folder that cannot be written, and leaves no file beside the drawing.
// Saving writes what was made since, in one transaction: after a crash, a kill or a full disk the drawing is what it
// was before or what it is after. Nothing here prints; an outcome says what went wrong in one line, with its kind.
#pragma once

#include "drawing/drawing.h"
#include "drawing/geopackage/store_notes.h"
#include "drawing/geopackage/write_progress.h"
#include "values/outcome.h"

#include <cstdint>
#include <map>
#include <string>

namespace fenmark::drawing {

struct NewIdentifier;

// What to read of a drawing. To append an import, its points and polylines need not be read.
enum class Load { Everything, WithoutEntities };

// Texts that people keep with a drawing, by their names (drawing_texts.h), and what became of them since they were read.
using DrawingTexts = std::map<std::string, std::string>;
struct TextChanges {
    DrawingTexts before;
    DrawingTexts wanted;
};

class DrawingStore {
  public:
    DrawingStore();
    ~DrawingStore();
    DrawingStore(const DrawingStore&) = delete;
    DrawingStore& operator=(const DrawingStore&) = delete;

    // Replaces the drawing by the one in the file. On failure the drawing is left as it was.
    Outcome open(const std::string& path, Drawing& drawing, Load load = Load::Everything);
    // The same, but where certainly nothing is there the drawing stays as it is (a new one), and its first save to this
    // path makes the file. If another program made one meanwhile, that save fails with AppearedMeanwhile and changes
    // nothing: like ChangedOutside, which means that somebody appended meanwhile, it is mended by opening anew and
    // importing again. Fails at once where no file could be made.
    Outcome openOrBegin(const std::string& path, Drawing& drawing, Load load = Load::Everything);
    // Writes what the file does not hold yet; a file that does not exist is made. A path other than the one last opened,
    // begun or saved gets the whole drawing, which must be fully loaded, and replaces a drawing that was there. The first
    // save to a file that was opened looks at every page of it, and fails with Damaged rather than write over a bad one.
    // The texts are written in the same transaction: those that were changed, as by changeTexts, and all to a new file.
    Outcome save(const std::string& path, Drawing& drawing, const WriteProgress& progress = {},
                 const TextChanges& texts = {});

    // Writes the whole drawing to a file that is none of the store's: the drawing counts as saved no more than before.
    static Outcome writeCopy(const std::string& path, const Drawing& drawing, const DrawingTexts& texts = {});

    // The file last opened, begun or saved; empty at first.
    const std::string& path() const { return path_; }
    // What is odd about the file last opened, mostly because another program changed it; worded by noteText.
    const std::vector<StoreNote>& notes() const { return notes_; }
    // True if save would change the file.
    bool hasChanges(const Drawing& drawing) const;

  private:
    Outcome create(const std::string& path, Drawing& drawing, const WriteProgress& progress, const DrawingTexts& texts,
                   bool mustBeNew);
    Outcome append(const std::string& path, Drawing& drawing, const WriteProgress& progress, const TextChanges& texts);

    std::string path_;
    bool begun_ = false; // nothing was at the path when it was looked up
    bool sound_ = false; // the pages of the file were looked at, or written, by this store
    std::vector<StoreNote> notes_;
    std::vector<NewIdentifier> newIdentifiers_; // to be written by the next save
    std::string stamp_;                         // of the file's last save
    Worded identifierFault_;                    // what keeps rows out of the file, also when it was removed from memory
    std::uint64_t savedId_ = 0;                 // last identifier in the file
    std::uint64_t highestId_ = 0;               // of what the file held when it was last read or written
};

// The message that stands for a kind of failure, for a file.
[[nodiscard]] Worded storeMessage(Failure failure, const std::string& path, const Worded& detail = {});

} // namespace fenmark::drawing
