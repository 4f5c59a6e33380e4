# The maker, and where users' settings lie. What shows or needs one of these takes it from here: the
# sources through Product.h, the packages by including this file. The version is the project's.
set(ZKR_MAKER "ZKR-soundworks")
set(ZKR_WEB_ADDRESS "www.zkr-soundworks.example")
set(ZKR_MAIL_ADDRESS "support@zkr-soundworks.example")
set(ZKR_COPYRIGHT "Copyright 2026 ${ZKR_MAKER}. Licensed under GPL-3.0.")

# The folder (Linux) or registry key (Windows) that holds the settings of the maker's products. Not
# derived from the maker's name: under a new name, users' presets and settings would not be found.
set(ZKR_SETTINGS_FOLDER "ZKR-soundworks")
