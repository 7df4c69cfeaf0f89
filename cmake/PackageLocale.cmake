# Read by cpack. Some file names of the examples are not ASCII, and can be archived only in a locale that has them.
set(ENV{LC_ALL} C.UTF-8)
