# The font whose outlines the tests read: DejaVu_SERIF is its file.
find_file(DejaVu_SERIF DejaVuSerif.ttf PATHS /usr/share/fonts PATH_SUFFIXES truetype/dejavu
          NO_DEFAULT_PATH)
mark_as_advanced(DejaVu_SERIF)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(DejaVu REQUIRED_VARS DejaVu_SERIF)
