#include "tools/vsthost/EditorLeakCheck.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

using vsthost::EditorLeakCheck;

EditorLeakCheck::Result make_result(long gdi_before, long gdi_after, long user_before, long user_after)
{
    EditorLeakCheck::Result r;
    r.rounds = 3;
    r.editors = 2;
    r.before.gdi = gdi_before;
    r.after.gdi = gdi_after;
    r.before.user = user_before;
    r.after.user = user_after;
    r.window_class.name = "EditorClass";
    r.own_class = true;
    return r;
}

std::string printed(const EditorLeakCheck::Result& r)
{
    std::ostringstream out;
    r.print(out);
    return out.str();
}

TEST(EditorLeakCheck, AnyGrowthOrALeftClassIsALeakAndFewerObjectsAreNot)
{
    EXPECT_FALSE(make_result(60, 60, 8, 8).has_leaked());
    EXPECT_FALSE(make_result(60, 58, 8, 7).has_leaked());
    EXPECT_TRUE(make_result(60, 61, 8, 8).has_leaked());
    EXPECT_TRUE(make_result(60, 60, 8, 9).has_leaked());
    auto left = make_result(60, 60, 8, 8);
    left.class_checked = true;
    left.class_left = true;
    EXPECT_TRUE(left.has_leaked());
    EXPECT_EQ(printed(left),
              "opened and closed 2 editors at once 3 times\n"
              "GDI objects: 60 before, 60 after\n"
              "USER objects: 8 before, 8 after\n"
              "editor window class \"EditorClass\": still registered after the last instance was deleted\n"
              "result: LEAK\n");
}

TEST(EditorLeakCheck, WhatCannotBeCountedOrIsNotThePluginsOwnIsNotALeak)
{
    auto r = make_result(-1, -1, -1, -1);
    r.own_class = false;
    EXPECT_FALSE(r.has_leaked());
    const std::string text = printed(r);
    EXPECT_NE(text.find("GDI objects: not counted on this system\n"), std::string::npos);
    EXPECT_NE(text.find("\"EditorClass\": not the plug-in's own, not checked\n"), std::string::npos);
    EXPECT_NE(text.find("result: nothing leaked\n"), std::string::npos);
}

TEST(EditorLeakCheck, TheClassIsJudgedOnlyOnceTheInstancesAreGone)
{
    auto r = make_result(60, 60, 8, 8);
    EXPECT_NE(printed(r).find("\"EditorClass\": not checked while instances live\n"), std::string::npos);
    r.class_checked = true;
    EXPECT_NE(printed(r).find("\"EditorClass\": unregistered after the last instance was deleted\n"),
              std::string::npos);
    EXPECT_FALSE(r.has_leaked());
}

}  // namespace
