#pragma once
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbBase.h>

#include "support/ErrorRecorder.h"
#include "support/RecordingKit.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

// A started library, a kit that records notifications and a recorder of
// posted errors, for the tests of the basic data objects.
class PbDataObjectTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        RecordingKit::ensureRegistered();
        kit = new RecordingKit;
        kit->ref();
        errors.reset(new ErrorRecorder);
    }
    void TearDown() override {
        errors.reset();
        kit->unref();
        PoQuillon::finish();
    }

    // The change types the kit was told of, oldest first.
    std::vector<PbBase::ChangeType> changes() const {
        std::vector<PbBase::ChangeType> types;
        for (const RecordingKit::Notification& notification : kit->notifications)
            types.push_back(notification.change);
        return types;
    }

    template <typename T> static std::string printed(const T& object) {
        FILE* file = std::tmpfile();
        object.print(file);
        std::rewind(file);
        std::string text;
        for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
            text += static_cast<char>(c);
        std::fclose(file);
        return text;
    }

    // Switches the process to a locale whose decimal separator is a comma:
    // an installed one, or else one compiled with localedef into a temporary
    // directory.  False when neither is possible.
    static bool useCommaLocale() {
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE.utf8", "fr_FR.utf8"})
            if (std::setlocale(LC_ALL, name))
                return true;
        char directory[] = "/tmp/quillon-locale-XXXXXX";
        if (!mkdtemp(directory))
            return false;
        const std::string command = std::string("localedef -i de_DE -f UTF-8 ") + directory +
                                    "/de_DE.UTF-8 >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0)
            return false;
        setenv("LOCPATH", directory, 1);
        const bool switched = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
        // The loaded locale is mapped into memory: its files may go.
        const int removed = std::system((std::string("rm -rf ") + directory).c_str());
        static_cast<void>(removed);
        return switched;
    }

    RecordingKit* kit = nullptr;
    std::unique_ptr<ErrorRecorder> errors;
};
