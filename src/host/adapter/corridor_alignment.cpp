// Making an alignment, step by step in the order that the civil edition requires.
#include "host/adapter/automation_values.h"
#include "host/adapter/element_collection_adapter.h"
#include "host/adapter/mirdane_corridor_utility.h"
#include "host/adapter/raise_on_failure.h"
#include "output/alignment_passes.h"

namespace fenmark::host {

namespace {

using mirdane::CivilAlignment;
using mirdane::ElementCollection;
using mirdane::StyleCollection;
using mirdane::StyleObject;
using mirdane::Variant;

using Elements = sima::Array<sima::EntityData>;

// Each of the three passes holds the alignment once more for its own time.

void runPiPass(CivilAlignment* alignment, Elements& elements) {
    const auto held = AutomationRef<CivilAlignment>::share(alignment);
    try {
        output::resolveSpiralPis(elements);
    } catch (MirdanException* exception) {
        delete exception; // the pass counts as done all the same
    }
}

std::int32_t runElementPass(CivilAlignment* alignment, Elements& elements) {
    const auto held = AutomationRef<CivilAlignment>::share(alignment);
    AutomationRef<ElementCollection> collection;
    if (held->getElements(collection.receive()) != 0) {
        return -1;
    }
    ElementCollectionAdapter adapter(std::move(collection));
    return output::addAlignmentElements(adapter, elements);
}

// Removes the auxiliary line before a leading clothoid. Such a route never gets so far, so there is nothing to remove;
// the test stays as it is.
void runRemovalPass(CivilAlignment* alignment, const Elements& elements) {
    const auto held = AutomationRef<CivilAlignment>::share(alignment);
    try {
        AutomationRef<ElementCollection> collection;
        raiseOnFailure(held->getElements(collection.receive()));
        if (!elements.empty() && elements[0].type == "A") {
            raiseOnFailure(collection->removeAt(Variant::int32(0)));
        }
    } catch (MirdanException* exception) {
        delete exception; // the pass counts as done all the same
    }
}

// The first style of a collection and its name. Raises a MirdanException if there is none.
std::string firstStyle(const AutomationRef<StyleCollection>& styles, AutomationRef<StyleObject>& style) {
    raiseOnFailure(styles->item(Variant::integer(0), style.receive()));
    std::string name;
    raiseOnFailure(style->getName(name));
    return name;
}

} // namespace

MdDbObjectId MirdaneCorridorUtility::createAlignment(std::string_view name, std::string_view siteName,
                                                     std::string_view description, double startStation,
                                                     Elements& elements) {
    // In this order, so that a failure releases as success does: the style, its collection, the alignment, the
    // collection of alignments, the site.
    AutomationRef<mirdane::CivilSite> site;
    AutomationRef<mirdane::AlignmentCollection> alignments;
    AutomationRef<CivilAlignment> alignment;
    AutomationRef<StyleCollection> secondStyles;
    AutomationRef<StyleObject> secondStyle;
    try {
        raiseOnFailure(findSite(siteName, site));
        raiseOnFailure(site->getAlignments(alignments.receive()));
        raiseOnFailure(civilDatabase_->getStyleCollectionB(secondStyles.receive()));
        const std::string secondStyleName = firstStyle(secondStyles, secondStyle);
        std::string firstStyleName;
        {
            AutomationRef<StyleCollection> styles;
            raiseOnFailure(civilDatabase_->getStyleCollectionA(styles.receive()));
            AutomationRef<StyleObject> style;
            firstStyleName = firstStyle(styles, style);
            style.release();
            styles.release();
        }

        const Variant firstVariant = stringVariant(firstStyleName);
        const Variant secondVariant = stringVariant(secondStyleName);
        const std::string layerName = drawing_.getCurrentLayerName();
        raiseOnFailure(
            alignments->add(automationString(name), layerName, firstVariant, secondVariant, alignment.receive()));
        alignment->setDescription(automationString(description));
        runPiPass(alignment.get(), elements);
        raiseOnFailure(runElementPass(alignment.get(), elements));
        runRemovalPass(alignment.get(), elements);
        alignment->setStartStation(startStation);
        std::uint64_t id = 0;
        raiseOnFailure(alignment->getObjectId(id));
        alignment->applyStyleByName(stringVariant(firstStyleName));
        alignment->applyStyleObject(secondStyle.get());

        secondStyle.release();
        secondStyles.release();
        alignment.release();
        alignments.release();
        site.release();
        return MdDbObjectId(id);
    } catch (MirdanException* exception) {
        delete exception;
        return {}; // the half-made alignment stays in the drawing
    }
}

} // namespace fenmark::host
