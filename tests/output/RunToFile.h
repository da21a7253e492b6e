#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "engine/FakeSurroundings.h"
#include "output/OutputRooms.h"
#include "platform/OutputFile.h"

namespace quillform::testing {

// The table that the outputs' tests report on.
inline const std::vector<Field> columns = {{.Name = "City", .Type = FieldType::Text, .Size = 20},
                                           {.Name = "Name", .Type = FieldType::Text, .Size = 20},
                                           {.Name = "Amount", .Type = FieldType::Long, .Size = 4}};
inline constexpr int City = 1;
inline constexpr int Name = 2;
inline constexpr int Amount = 3;

inline std::vector<Value> Row(const std::string& city, const std::string& name = "", int amount = 0) {
    return {Value::Text(city), Value::Text(name), Value::Integer(amount)};
}

/// The bytes of the file that a run writes.
inline std::string RunTo(Scene& scene, OutputType type, RunOptions options = {.walk = Walk::OnePass}) {
    const ScratchFolder folder;
    const std::string file = folder.File("report");
    const std::unique_ptr<Output> output = MakeOutput(type, {file});
    const RunOutcome outcome = scene.Run(*output, options);
    EXPECT_FALSE(outcome.failure) << outcome.failure->what();
    return ReadWholeFile(file);
}

}  // namespace quillform::testing
