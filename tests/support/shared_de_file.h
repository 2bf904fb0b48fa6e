// Tests of the process's one DE file leave it closed, and see what was printed meanwhile.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "solsys/de_ephemeris.h"
#include "solsys/platform.h"
#include "tests/support/debug_text.h"
#include "tests/support/temp_folder.h"

class SharedDeFile : public testing::Test {
  protected:
    void SetUp() override {
        StarwickPath::SetWorkPath((folder_ / "work").c_str());
        DE_Ephemeris::clear();
    }
    void TearDown() override {
        DE_Ephemeris::clear();
        StarwickPath::SetWorkPath(nullptr);
    }
    static std::string& printed() { return support::DebugText::text(); }

    support::DebugText collector_;
    TempFolder folder_;
};
