// A scripted host with the corridor utility that is under test, and the check of its references.
#pragma once

#include "scripted_host.h"

#include "host/adapter/mirdane_corridor_utility.h"
#include "host/adapter/mirdane_drawing_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>

namespace fenmark::test {

// Calls of one operation of a connected utility; afterwards every object was released exactly once.
class CorridorAdapter : public testing::Test {
  protected:
    CorridorAdapter() { host.sites = {{"サイト", {"A線", "B線"}}, {"Site 2", {"C線"}}}; }

    void connect() {
        utility.emplace(drawing);
        utility->connect();
        host.calls.clear();
        host.steps = 0;
    }
    void TearDown() override {
        utility.reset();
        const auto left = host.unbalanced();
        EXPECT_TRUE(left.empty()) << left.front();
        EXPECT_TRUE(host.open.empty());
        EXPECT_TRUE(host.faults.empty()) << host.faults.front();
    }

    scripted::Host host;
    host::MirdaneDrawingWriter drawing;
    std::optional<host::MirdaneCorridorUtility> utility;
};

} // namespace fenmark::test
