# The files of each package.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(plain OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# The archive for Windows; the installer contains the same files.
install(FILES ${ZKR_PRODUCTS}/windows/ZKRT46.dll ${manual} ${notices}/windows/README.txt
    ${notices}/windows/LICENSE.txt ${notices}/windows/COPYRIGHT.txt
  DESTINATION . COMPONENT windows PERMISSIONS ${plain})
install(DIRECTORY ${ZKR_PRODUCTS}/windows/ZKRT46.vst3
  DESTINATION . COMPONENT windows FILE_PERMISSIONS ${plain})
install(DIRECTORY ${presets}/
  DESTINATION "VST3 Presets" COMPONENT windows FILE_PERMISSIONS ${plain})

# The archive for Linux.
install(FILES ${ZKR_PRODUCTS}/linux/ZKRT46.so ${manual} ${notices}/linux/README.txt
    ${notices}/linux/copyright ${notices}/linux/zkrt46.1 ${top}/LICENSE
  DESTINATION . COMPONENT linux PERMISSIONS ${plain})
install(PROGRAMS ${ZKR_PRODUCTS}/linux/zkrt46 DESTINATION . COMPONENT linux)
install(DIRECTORY ${ZKR_PRODUCTS}/linux/ZKRT46.vst3 ${notices}/completions
  DESTINATION . COMPONENT linux FILE_PERMISSIONS ${plain})
install(DIRECTORY ${presets} DESTINATION . COMPONENT linux FILE_PERMISSIONS ${plain})

# The Debian package.
install(FILES ${ZKR_PRODUCTS}/linux/ZKRT46.so
  DESTINATION lib/vst COMPONENT debian PERMISSIONS ${plain})
install(DIRECTORY ${ZKR_PRODUCTS}/linux/ZKRT46.vst3
  DESTINATION lib/vst3 COMPONENT debian FILE_PERMISSIONS ${plain})
install(DIRECTORY ${presets} DESTINATION share/vst3 COMPONENT debian FILE_PERMISSIONS ${plain})
install(PROGRAMS ${ZKR_PRODUCTS}/linux/zkrt46 DESTINATION bin COMPONENT debian)
install(FILES ${manual} ${notices}/linux/copyright ${notices}/debian/changelog.gz
  DESTINATION ${documents} COMPONENT debian PERMISSIONS ${plain})
install(FILES ${notices}/debian/zkr-t46.zkr-t46-manual
  DESTINATION share/doc-base COMPONENT debian PERMISSIONS ${plain})
install(FILES debian/lintian-overrides
  DESTINATION share/lintian/overrides RENAME zkr-t46 COMPONENT debian PERMISSIONS ${plain})
install(FILES ${notices}/debian/${metainfo}
  DESTINATION share/metainfo COMPONENT debian PERMISSIONS ${plain})
install(FILES ${notices}/linux/zkrt46.1.gz
  DESTINATION share/man/man1 COMPONENT debian PERMISSIONS ${plain})
install(FILES ${notices}/completions/zkrt46
  DESTINATION share/bash-completion/completions COMPONENT debian PERMISSIONS ${plain})
install(FILES ${notices}/completions/_zkrt46
  DESTINATION share/zsh/vendor-completions COMPONENT debian PERMISSIONS ${plain})
install(FILES ${notices}/completions/zkrt46.fish
  DESTINATION share/fish/vendor_completions.d COMPONENT debian PERMISSIONS ${plain})
install(FILES ${notices}/debian/ManualPath
  DESTINATION share/${ZKR_SETTINGS_FOLDER}/ZKRT46 COMPONENT debian PERMISSIONS ${plain})
