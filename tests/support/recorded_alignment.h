// An alignment that stands in a recorded drawing before a test begins.
#pragma once

#include "host/recording/recording_host.h"

#include <gtest/gtest.h>

#include <string>

namespace fenmark::test {

// A straight from (0, 0) to (1000, 0), in the first site or, if there is none, in one made for it.
inline void addStraightAlignment(host::RecordingHost& host, const std::string& name) {
    sima::Array<sima::EntityData> elements;
    sima::EntityData straight;
    straight.type = "S";
    straight.startX = straight.startY = straight.endX = "0";
    straight.endY = "1000";
    elements.push_back(straight);
    if (host.civil.sites.empty()) {
        host.civil.sites.push_back("工区");
    }
    const auto corridor = host.makeCorridorUtility();
    corridor->connect();
    ASSERT_TRUE(corridor->createAlignment(name, host.civil.sites.front(), "", 0.0, elements).isValid());
    corridor->disconnect();
}

} // namespace fenmark::test
