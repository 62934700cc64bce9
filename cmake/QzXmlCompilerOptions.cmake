# What every target of this project is compiled with; nothing of it reaches the users of the library.
set(QZXML_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-qual -Wformat=2 -Wundef -Wconversion -Wsign-conversion)

# Sanitizers to compile and link with, e.g. "address;undefined" or "thread".
set(QZXML_SANITIZE "" CACHE STRING "Sanitizers of a development build, separated by semicolons")
if(QZXML_SANITIZE)
  string(REPLACE ";" "," _qzxml_sanitizers "${QZXML_SANITIZE}")
  add_compile_options(-fsanitize=${_qzxml_sanitizers} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${_qzxml_sanitizers})
endif()

# Compiles a target of this project with its warnings.
function(qzxml_compile_options target)
  target_compile_options(${target} PRIVATE ${QZXML_WARNINGS})
endfunction()
