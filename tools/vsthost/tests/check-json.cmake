# Reads a validation report written by "vsthost validate --json" with CMake's
# own JSON parser, so that a malformed file fails, and prints each plug-in's
# result and how many checks it lists.
file(READ "${FILE}" json)
string(JSON count LENGTH "${json}" plugins)
math(EXPR last "${count} - 1")
foreach(i RANGE ${last})
  string(JSON path GET "${json}" plugins ${i} path)
  string(JSON result GET "${json}" plugins ${i} result)
  string(JSON checks LENGTH "${json}" plugins ${i} checks)
  message("${path}: ${result}, ${checks} checks")
endforeach()
