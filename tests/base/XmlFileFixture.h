#pragma once

#include "base/XmlDocument.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

/// Reads XML files from their bytes.
class XmlFileFixture : public testing::Test {
protected:
    std::string TextOf(std::string_view bytes) {
        base::XmlDocument document;
        document.LoadFile(folder.Write("file.xml", bytes));
        return document.Root().Text();
    }
    Refusal RefusalOfBytes(std::string_view bytes) {
        return RefusalOf([&] { TextOf(bytes); });
    }

    TestFolder folder;
};
