#include "view/input/gestures.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace sonavel {
namespace {

GestureIntent Nothing() {
    return {};
}

GestureIntent Selects(std::uint32_t start, std::uint32_t end) {
    GestureIntent intent;
    intent.selection = Selection{start, end};
    return intent;
}

GestureIntent SetsCursor(std::uint32_t frame) {
    GestureIntent intent = Selects(frame, frame);
    intent.cursor = frame;
    return intent;
}

GestureIntent MovesMarker(std::uint32_t position) {
    GestureIntent intent;
    intent.marker = {7, position};
    return intent;
}

struct Step {
    std::uint32_t frame;
    GestureIntent intent;
};

TEST(Gestures, PressMovesAndReleaseMeanWhatTheTableSays) {
    const auto select = [] { return std::make_unique<SelectGesture>(); };
    const auto extend = [](Selection selection, std::uint32_t cursor) {
        return [=] { return std::make_unique<ExtendGesture>(selection, cursor); };
    };
    const auto edge = [](std::uint32_t fixed) {
        return [=] { return std::make_unique<DragEdgeGesture>(fixed); };
    };
    const auto marker = [](std::uint32_t position) {
        return [=] { return std::make_unique<DragMarkerGesture>(7, position, 1000); };
    };
    const struct {
        const char* name;
        std::function<std::unique_ptr<Gesture>()> make;
        std::vector<Step> steps;  // press, moves, release
    } cases[] = {
        {"click", select, {{40, SetsCursor(40)}, {40, Selects(40, 40)}}},
        {"drag to the right",
         select,
         {{40, SetsCursor(40)}, {50, Selects(40, 50)}, {60, Selects(40, 60)}}},
        {"drag over the press to the left",
         select,
         {{40, SetsCursor(40)}, {50, Selects(40, 50)}, {30, Selects(30, 40)}}},
        {"shift near the start",
         extend({100, 200}, 5),
         {{110, Selects(110, 200)}, {90, Selects(90, 200)}, {250, Selects(200, 250)}}},
        {"shift near the end", extend({100, 200}, 5), {{190, Selects(100, 190)}}},
        {"shift in the middle moves the end", extend({100, 200}, 5), {{150, Selects(100, 150)}}},
        {"shift outside", extend({100, 200}, 5), {{20, Selects(20, 200)}}},
        {"shift without a selection",
         extend({100, 100}, 50),
         {{80, Selects(50, 80)}, {20, Selects(20, 50)}}},
        {"shift on a passed selection", extend({110, 100}, 110), {{130, Selects(110, 130)}}},
        {"click on an edge", edge(200), {{101, Nothing()}, {101, Nothing()}}},
        {"edge over the other one",
         edge(200),
         {{101, Nothing()}, {150, Selects(150, 200)}, {230, Selects(200, 230)}}},
        {"edge back to where it was pressed",
         edge(200),
         {{101, Nothing()}, {150, Selects(150, 200)}, {101, Selects(101, 200)}}},
        {"click on a flag", marker(500), {{503, Nothing()}, {503, Nothing()}}},
        {"flag keeps its distance to the pointer",
         marker(500),
         {{503, Nothing()}, {513, MovesMarker(510)}, {503, MovesMarker(500)}}},
        {"flag stops at both ends",
         marker(500),
         {{503, Nothing()}, {0, MovesMarker(0)}, {1000, MovesMarker(997)}}},
        {"flag stops at the end", marker(990), {{503, Nothing()}, {600, MovesMarker(1000)}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<Gesture> gesture = c.make();
        for (std::size_t i = 0; i < c.steps.size(); ++i) {
            const std::uint32_t frame = c.steps[i].frame;
            const bool last = i + 1 == c.steps.size() && i > 0;
            const GestureIntent intent = i == 0 ? gesture->Press(frame)
                                         : last ? gesture->Release(frame)
                                                : gesture->Move(frame);
            EXPECT_EQ(intent, c.steps[i].intent) << "step " << i;
        }
    }
}

}  // namespace
}  // namespace sonavel
