#pragma once

#include "ValidationResult.h"

#include <string>
#include <vector>

namespace vsthost
{

class ValidationReport;
struct ValidationOptions;

// Runs one check group in a child process: the program, started with the
// group's options, loads the plug-in afresh, runs the group and hands every
// check back as it is made. A child that dies, ends early or outlives the
// time limit becomes one failed check of the group, saying how it ended and
// in which step.
class GroupProcess
{
public:
    // program and the words before the options: this tool and "validate".
    GroupProcess(std::string program, std::vector<std::string> command)
        : _program(std::move(program)), _command(std::move(command))
    {
    }

    GroupOutcome run(const ValidationOptions& options, const std::string& group, ValidationReport& report) const;

    // The words that make this tool run one group as a child, all but the
    // channel's name, which the child process adds.
    static std::vector<std::string> get_child_args(const ValidationOptions& options, const std::string& group);

private:
    std::string _program;
    std::vector<std::string> _command;
};

}  // namespace vsthost
