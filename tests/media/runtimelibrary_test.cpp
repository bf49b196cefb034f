#include "media/runtimelibrary.h"

#include <gtest/gtest.h>

namespace {

struct TwoFunctions {
    void (*first)() = nullptr;
    void (*second)() = nullptr;
};

// The conversions that filter and the HEIC stills say why they cannot run from this text.
TEST(RuntimeLibrary, LoadsAllOrNoneAndSaysWhy)
{
    const struct {
        const char *soname;
        const char *second;
        QString why; // empty when loaded
    } rows[] = {
        {"libc.so.6", "free", {}},
        {"libc.so.6", "no_such_function", "libc.so.6 lacks no_such_function"},
        {"libcuebox-none.so.0", "free",
         "libcuebox-none.so.0: cannot open shared object file: No such file or directory"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.soname + std::string(" ") + row.second);
        const RuntimeLibrary<TwoFunctions> library(row.soname, [&](auto &opened, TwoFunctions &f) {
            return opened.resolve("malloc", f.first) && opened.resolve(row.second, f.second);
        });
        QString why = QStringLiteral("unset");
        const TwoFunctions *functions = library.functions(&why);
        EXPECT_EQ(why, row.why);
        EXPECT_EQ(functions != nullptr, row.why.isEmpty());
        if (functions) {
            EXPECT_TRUE(functions->first && functions->second);
        }
    }
}

} // namespace
