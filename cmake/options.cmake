# Language level and warnings of every target of the project; users of the package get none of it.
# The presets for developers make errors of the warnings.
add_library(basbd_options INTERFACE)
target_compile_features(basbd_options INTERFACE cxx_std_17)
target_compile_options(basbd_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(BASBD_SANITIZE)
  target_compile_options(basbd_options INTERFACE
    -fsanitize=${BASBD_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(basbd_options INTERFACE -fsanitize=${BASBD_SANITIZE})
endif()
