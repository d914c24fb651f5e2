// The tool velora: what it says of wrong input, with which exit code, and that it leaves nothing.
#ifdef VELORA_TOOL

#include "tests/authoring/tool.h"

namespace velora::authoring {
namespace {

class Refusals : public Tool {
 protected:
  Refusals() {
    Write("short.bin", std::string(256, '\x10'));
    Write("long.bin", std::string(19652, '\x10'));
    Write("rgb.bin", std::string(14739, '\x10'));
    Write("nonsense.bin", "nonsense");
    Write("\xff.bin", "nonsense");
    Write("gray.bin", std::string(256, '\x20'));
  }

  const std::string vector_ = VELORA_TEST_DATA "/vectors/";
};

// A verb with its options, the file behind it, the reason, and the exit code.
TEST_F(Refusals, NameTheirPlaceAndWhatIsExpected) {
  const std::string packs = "\"packs\": [\"" + vector_ + "toner-cmyk/printer.velcase\"]";
  const std::string cmyk = "{\"platform\": 7, \"buffer\": 19652, " + packs;
  const std::string ink = "{\"platform\": 2, \"mode\": {}, \"packs\": [\"" + vector_ +
                          "ink/printer.velcase\"], \"locator_color\": ";
  const struct {
    const char* verb;
    std::string json, reason;
    int exit_code = 2;
  } rows[] = {
      // JSON
      {"author", "{\n\"platform\": 7,\n\"tables\" []}", "file.json:3: no JSON: syntax error"},
      {"author", "[]", "file.json:1: no JSON object"},
      {"author", "{\"platform\": 7,\n\n\"platform\": 8}",
       "file.json:3: \"platform\": this key is there twice, first in line 1"},
      {"--json author", "{\n\"plattform\": 7}",
       "\"file\": \"file.json\",\n    \"line\": 2,\n    \"key\": \"plattform\""},
      // keys
      {"author", "{\n\"plattform\": 7}",
       "2: \"plattform\": unknown key; did you mean \"platform\" (1 "},
      {"author", "{\"platform\": 7,\n\"settings\": {\n\"scaler\": 3}}",
       "file.json:3: \"scaler\": unknown key in \"settings\"; did you mean \"scalar\" (1 to 255)?"},
      {"author", R"({"platform": 7, "tables": [{"file": "long.bin", "settings": {}}]})",
       "\"settings\": unknown key in \"tables\"; expected \"table_type\", "},
      {"author", R"({"pipeline": "ink", "platform": 7, "reference": "long.bin"})",
       "\"reference\": unknown key; "},
      {"author", "{}", "\"platform\": this key is missing; expected 1 to 13 or 127"},
      {"author", R"({"job": 2})", "\"job\": 2; expected 1"},
      {"rebuild", "{" + packs + "}", "\"platform\": this key is missing"},
      // values
      {"author", R"({"platform": 7.5})", "\"platform\": 7.5; expected 1 to 13 or 127"},
      {"author", R"({"platform": 7, "pipeline": "wax"})", "\"wax\"; expected \"toner\" or \"ink\""},
      {"author", R"({"platform": 7, "tables": [3]})", "\"tables\": 3; expected a list of objects"},
      {"author", R"({"platform": 7, "pipeline": "ink", "ink": {"drops_per_level": [0, 300]}})",
       "\"drops_per_level\": 300; expected at most 16 numbers, each 0 to 255"},
      {"author", R"({"platform": 7, "pipeline": "ink", "locator_index": 1000})",
       "\"locator_index\": 1000; expected 0 to 999"},
      {"author", R"({"platform": 7, "reference": "long.bin",
                     "tables": [{"file": "long.bin", "axis_type": 2}]})",
       "\"axis_type\": 2; expected 0 to 1"},
      {"author", R"({"platform": 7, "reference": "long.bin",
                     "tables": [{"file": "long.bin", "theme_type": 99}]})",
       "\"theme_type\": 99; expected 0 to 10"},
      {"author", R"({"platform": 7, "tables": [{"file": "long.bin"}]})",
       "\"reference\": this key is missing; expected a file of 19652 bytes"},
      // goals
      {"author", R"({"platform": 7, "goal": {"ciede2000": {"median": 1}}})",
       "\"median\": unknown key in \"ciede2000\""},
      {"author", R"({"platform": 7, "goal": {"ink": 0}})", "\"ink\": 0; expected 1 to 255"},
      {"author", R"({"platform": 7, "goal": {"bytes": 9, "ink": 3}})", "\"bytes\", not both"},
      {"author", R"({"platform": 7, "goal": "lossless", "settings": {}})",
       "\"goal\" or \"settings\""},
      {"author", R"({"platform": 7, "pipeline": "ink", "goal": "lossless", "level": 1})",
       "\"goal\": a job has"},
      {"author", R"({"platform": 7, "printer": {"widths": ["nonsense.bin"]}})",
       "expected a list of 4 texts"},
      {"author", R"({"platform": 7, "output_profile": "nonsense.bin", "tables": []})",
       "\"output_profile\": "},
      {"author --keep nowhere", R"({"platform": 7})", "nowhere: no folder"},
      {"author --keep .", R"({"platform": 7})", "no width tables of an earlier authoring"},
      {"author", R"({"platform": 7, "reference": "long.bin", "settings": {}, "tables": [
                     {"file": "long.bin", "goal": {"ink": 3}}]})",
       "file.json:2: \"goal\": this job has \"settings\""},
      {"author", R"({"platform": 7, "pipeline": "ink", "level": 1, "tables": [{"mode": {},
                     "file": "long.bin", "goal": "lossless"}]})",
       "file.json:2: \"goal\": this job has \"form\", \"level\" or \"range\""},
      {"author", R"({"platform": 7})", "file.json: a job without a table"},
      // files
      {"author", R"({"platform": 7, "reference": "."})", "\"reference\": .: Is a directory"},
      {"author", R"({"platform": 7, "reference": "none.bin"})",
       "file.json:1: \"reference\": none.bin: No such file or directory"},
      {"rebuild", cmyk + ", \"reference\": \"short.bin\"}",
       "short.bin: 256 bytes; \"reference\" needs 19652"},
      {"rebuild", cmyk + ", \"widths\": [\"short.bin\"]}",
       "short.bin: 256 bytes; \"widths\" needs 2457 to 32767"},
      {"rebuild", cmyk + ", \"keys\": [\"\", \"nonsense.bin\"]}",
       "nonsense.bin: 8 bytes; \"keys\" needs 32"},
      {"rebuild", cmyk + ", \"corrections\": \"rgb.bin\"}",
       "rgb.bin: 14739 bytes; \"corrections\" needs 19652"},
      {"rebuild", cmyk + ", \"expected\": \"rgb.bin\"}",
       "rgb.bin: 14739 bytes; \"expected\" needs 19652"},
      {"rebuild", ink + "\"nonsense.bin\", \"expected_color\": \"long.bin\"}",
       "long.bin: 19652 bytes; \"expected_color\" needs 39728"},
      {"rebuild",
       R"({"platform": 2, "mode": {}, "packs": ["long.bin"], "locator_gray": "long.bin"})",
       "long.bin: 19652 bytes; \"locator_gray\" needs 1 to 256"},
      {"rebuild", R"({"platform": 2, "mode": {}, "packs": ["long.bin"]})",
       "a call without a locator"},
      // calls that the library refuses, and comparisons of different things
      {"rebuild --quiet", cmyk + "}", ": refused\n"},
      {"rebuild --compare", cmyk + "}", "refused"},
      {"rebuild --library nonsense.bin", cmyk + "}", "nonsense.bin"},
      {"rebuild", ink + "\"nonsense.bin\"}", "the packs do not load"},
  };
  for (const auto& row : rows) {
    Write("file.json", row.json);
    Expect({std::string(row.verb) + " file.json", row.reason}, row.exit_code);
  }
  // An ink record is not a table of another pipeline.
  Expect({"rebuild --quiet " + vector_ + "ink/call.json --expected gray.bin",
          "--expected goes with a call for one record"},
         3);
  Expect({"rebuild --quiet " + vector_ + "toner-cmyk/call.json --expected gray.bin",
          "19652 bytes, which do not compare with a file of 256"},
         2);
  const struct {
    Row row;
    int exit_code;
  } commands[] = {
      {{"info nothing.velcase", "nothing.velcase: No such file or directory"}, 2},
      {{"info .", ".: Is a directory"}, 2},
      {{"info nonsense.bin", "nonsense.bin: "}, 2},
      {{"--json info \xff.bin", "\"file\": \"\xEF\xBF\xBD.bin\""}, 2},
      {{"info " + vector_ + "ink/printer.velcase > /dev/full", "No space left on device"}, 2},
      {{"sample --output no_such_profile", "no_such_profile"}, 2},
      {{"sample", "needs --output"}, 3},
      {{"", "expected a verb: sample, convert, author"}, 3},
      {{"convrt long.bin", "convrt: no verb; expected sample, convert, "}, 3},
      {{"author", "job is required"}, 3},
      {{"rebuild --repeat 0 file.json", "--repeat"}, 3},
  };
  for (const auto& [row, exit_code] : commands) Expect(row, exit_code);
}

// No room at all: the file that is there stays, and no other one appears.
TEST_F(Refusals, LeaveNothingHalfWritten) {
  Write("job.json", R"({"platform": 3, "gray_reference": "gray.bin",
      "curves": [{"file": "gray.bin"}]})");
  fs::create_directories(folder_ / "out");
  Write("out/black.velcase", "as it was");
  const std::string text =
      Shell("trap '' XFSZ; ulimit -f 0; \"$V\" author job.json -o out; trap - XFSZ");
  EXPECT_THAT(text, testing::HasSubstr("File too large"));
  EXPECT_EQ(Read("out/black.velcase"), "as it was");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_ / "out"), {}), 1);
}

}  // namespace
}  // namespace velora::authoring

#endif
