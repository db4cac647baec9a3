// A bank chunk comes from the host and is not trusted: the reader must refuse
// what does not fit the given bytes, leave the bank as it was when it refuses,
// keep its programs of one shape, and write whatever it accepts to a record
// that reads the same again.
#include "lumo/BankManager.h"
#include "tests/fuzz/FuzzCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    lumo::BankManager bank;
    lumo::ProgramSlot program;
    program.set_nbr_values(6);
    bank.set_program(0, program);
    bank.set_nbr_programs(2);
    bank.set_program_name(1, "second");
    zq_test::check_record_read(bank, data, size, [](const lumo::BankManager& read) {
        zq_test::require(read.get_nbr_programs() >= 1);
        for (int i = 1; i < read.get_nbr_programs(); ++i)
        {
            zq_test::require(read.use_program(i).has_same_shape(read.use_program(0)));
        }
    });
    return 0;
}
