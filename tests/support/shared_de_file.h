// Tests of the process's one DE file leave it closed, and see what was printed meanwhile.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "solsys/de_ephemeris.h"
#include "solsys/platform.h"
#include "tests/support/temp_folder.h"

class SharedDeFile : public testing::Test {
  protected:
    void SetUp() override {
        printed().clear();
        SetDebugPrintHandler([](const char* text) { printed() += text; });
        StarwickPath::SetWorkPath((folder_ / "work").c_str());
        DE_Ephemeris::clear();
    }
    void TearDown() override {
        DE_Ephemeris::clear();
        StarwickPath::SetWorkPath(nullptr);
        SetDebugPrintHandler(nullptr);
    }
    static std::string& printed() {
        static std::string text;
        return text;
    }

    TempFolder folder_;
};
