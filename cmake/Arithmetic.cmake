# A compiler may fuse a product and a sum into one operation that rounds once. Machines that have one
# would then draw other pixels and print other digits than those that have not.
if(NOT MSVC)
  add_compile_options(-ffp-contract=off)
endif()
