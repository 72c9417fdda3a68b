#pragma once
// EXPECT_THROW that also compares the library exception's Message() with the text the
// library documents (a wrong exception type escapes and fails the test as well).

#include <QString>
#include <gtest/gtest.h>

#define VX_EXPECT_THROW_MSG(statement, exception, message)        \
    do {                                                          \
        try {                                                     \
            statement;                                            \
            ADD_FAILURE() << #statement " threw nothing";         \
        } catch (const exception& vxThrown) {                     \
            EXPECT_EQ(vxThrown.Message(), QString(message));      \
        }                                                         \
    } while (false)
