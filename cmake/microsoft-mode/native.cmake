# Lets this build configure as it would on Windows, where the system and its packages are those that
# it builds for. CMAKE_PROJECT_INCLUDE names this file.
set(CMAKE_CROSSCOMPILING OFF)
