// A preset chunk comes from the host and is not trusted: the reader must refuse
// what does not fit the given bytes, leave the program as it was when it
// refuses, and write whatever it accepts to a record that reads the same again.
#include "lumo/ProgramSlot.h"
#include "tests/fuzz/FuzzCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    lumo::ProgramSlot program;
    program.set_name("before");
    program.set_nbr_values(6);
    program.set_value(2, 0.5f);
    zq_test::check_record_read(program, data, size, [size](const lumo::ProgramSlot& read) {
        // Never larger than the input plus the name field the writer pads to.
        zq_test::require(read.get_size() <= size + lumo::ProgramSlot::name_capacity);
        for (int i = 0; i < read.get_nbr_values(); ++i)
        {
            zq_test::require(read.get_value(i) >= 0.0f && read.get_value(i) <= 1.0f);
        }
    });
    return 0;
}
