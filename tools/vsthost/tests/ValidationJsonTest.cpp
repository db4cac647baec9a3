#include "tools/vsthost/ValidationJson.h"
#include "tools/vsthost/ValidationOptions.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

using vsthost::GroupOutcome;
using vsthost::PluginResult;
using vsthost::ValidationJson;
using vsthost::Verdict;

TEST(ValidationJson, PluginTextOfAnyBytesBecomesAValidString)
{
    EXPECT_EQ(ValidationJson::quote("a \"b\" \\c\n\t\x01\x7F"), "\"a \\\"b\\\" \\\\c\\n\\t\\u0001\\u007f\"");
    // Well-formed UTF-8 stays; a stray byte is read as Latin-1.
    const std::string valid = "\xC2\xB0 \xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB9\xF0\x90\x80\x80";
    EXPECT_EQ(ValidationJson::quote(valid), "\"" + valid + "\"");
    EXPECT_EQ(ValidationJson::quote("caf\xE9"), "\"caf\\u00e9\"");
    // Cut short, overlong, a UTF-16 surrogate, beyond U+10FFFF, a lone continuation byte.
    EXPECT_EQ(ValidationJson::quote("\xE2\x82"), "\"\\u00e2\\u0082\"");
    EXPECT_EQ(ValidationJson::quote("\xC0\xAF"), "\"\\u00c0\\u00af\"");
    EXPECT_EQ(ValidationJson::quote("\xED\xA0\x80"), "\"\\u00ed\\u00a0\\u0080\"");
    EXPECT_EQ(ValidationJson::quote("\xF4\x90\x80\x80"), "\"\\u00f4\\u0090\\u0080\\u0080\"");
    EXPECT_EQ(ValidationJson::quote("\x80"), "\"\\u0080\"");
}

TEST(ValidationJson, ListsEveryPluginGroupAndCheck)
{
    vsthost::ValidationOptions options;
    PluginResult crashed;
    crashed.path = "a.so";
    crashed.kind = PluginResult::Kind::crashed;
    crashed.groups = {{"audio", GroupOutcome::Kind::crashed, true, "crashed: signal 11", 0.5},
                      {"midi", GroupOutcome::Kind::completed, true, "", 0.25}};
    crashed.checks = {{"audio", "audio group", Verdict::fail, "crashed: signal 11", 0.5},
                      {"midi", "MIDI flood", Verdict::pass, "clean", 0.125}};
    crashed.passed = 1;
    crashed.failed = 1;
    crashed.seconds = 1.0;
    PluginResult other;
    other.path = "b.so";
    other.kind = PluginResult::Kind::not_a_plugin;
    std::ostringstream out;
    ValidationJson::write(out, options, {crashed, other});
    EXPECT_EQ(out.str(), R"({
  "level": 2,
  "seed": 1,
  "repeats": 1,
  "isolation": "process per group",
  "jobs": 2,
  "timeout": 60.000000,
  "passed": 0,
  "failed": 0,
  "crashed": 1,
  "not_plugins": 1,
  "plugins": [
    {
      "path": "a.so",
      "result": "crash",
      "passed": 1,
      "failed": 1,
      "duration": 1.000000,
      "groups": [
        {"name": "audio", "outcome": "crashed", "detail": "crashed: signal 11", "duration": 0.500000},
        {"name": "midi", "outcome": "completed", "detail": "", "duration": 0.250000}
      ],
      "checks": [
        {"group": "audio", "name": "audio group", "result": "fail", "detail": "crashed: signal 11", "duration": 0.500000},
        {"group": "midi", "name": "MIDI flood", "result": "pass", "detail": "clean", "duration": 0.125000}
      ]
    },
    {
      "path": "b.so",
      "result": "not a plug-in",
      "passed": 0,
      "failed": 0,
      "duration": 0.000000,
      "groups": [],
      "checks": []
    }
  ]
}
)");
}

}  // namespace
