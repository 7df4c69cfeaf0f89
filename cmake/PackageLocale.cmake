# Read by cpack. File names of the examples go beyond ASCII, and archives take them in a locale that knows them only.
set(ENV{LC_ALL} C.UTF-8)
