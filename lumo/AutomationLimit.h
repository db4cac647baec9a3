#pragma once

#include <vector>

namespace lumo
{

// Decides which parameters a host that can automate only a few may automate:
// those of the most important automation priorities (lowest numbers) that fit
// into the host's budget as whole priority groups.
class AutomationLimit
{
public:
    static constexpr int unlimited = 999999999;

    int get_limit() const { return _limit; }

    // budget: how many parameters the host can automate (0 or below: unknown,
    // the limit stays). priorities: each parameter's automation priority.
    void update(int budget, const std::vector<int>& priorities);

    bool allows(int automation_priority) const { return automation_priority <= _limit; }

private:
    int _limit = unlimited;
};

}  // namespace lumo
