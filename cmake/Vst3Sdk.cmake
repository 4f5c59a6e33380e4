# The VST 3 SDK: the subset in Debian's juce-modules-source-data, or a full SDK in ZKR_VST3_SDK.
set(ZKR_VST3_SDK
    /usr/share/juce/modules/juce_audio_processors/format_types/VST3_SDK
    CACHE PATH "Folder of the VST 3 SDK that holds base/, pluginterfaces/ and public.sdk/")
if(NOT EXISTS ${ZKR_VST3_SDK}/pluginterfaces/base/funknown.h)
  message(FATAL_ERROR "No VST 3 SDK in ${ZKR_VST3_SDK}. Install Debian's juce-modules-source-data, "
                      "or name an SDK with -DZKR_VST3_SDK=FOLDER.")
endif()

add_library(vst3sdk STATIC
  ${ZKR_VST3_SDK}/base/source/baseiids.cpp
  ${ZKR_VST3_SDK}/base/source/fdebug.cpp
  ${ZKR_VST3_SDK}/base/source/fobject.cpp
  ${ZKR_VST3_SDK}/base/source/fstreamer.cpp
  ${ZKR_VST3_SDK}/base/source/fstring.cpp
  ${ZKR_VST3_SDK}/base/source/updatehandler.cpp
  ${ZKR_VST3_SDK}/base/thread/source/flock.cpp
  ${ZKR_VST3_SDK}/pluginterfaces/base/conststringtable.cpp
  ${ZKR_VST3_SDK}/pluginterfaces/base/coreiids.cpp
  ${ZKR_VST3_SDK}/pluginterfaces/base/funknown.cpp
  ${ZKR_VST3_SDK}/pluginterfaces/base/ustring.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/common/memorystream.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/common/pluginview.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/hosting/hostclasses.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/hosting/pluginterfacesupport.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/vstbus.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/vstcomponent.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/vstcomponentbase.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/vsteditcontroller.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/vstinitiids.cpp
  ${ZKR_VST3_SDK}/public.sdk/source/vst/vstparameters.cpp)
# sdk/pluginterfaces/base/atomicadd.cpp defines its own.
set_source_files_properties(${ZKR_VST3_SDK}/pluginterfaces/base/funknown.cpp
  PROPERTIES COMPILE_DEFINITIONS atomicAdd=unusedAtomicAdd)
# Newer SDKs convert the strings of their host classes there.
set(string_conversion ${ZKR_VST3_SDK}/public.sdk/source/vst/utility/stringconvert.cpp)
if(EXISTS ${string_conversion})
  target_sources(vst3sdk PRIVATE ${string_conversion})
endif()
target_include_directories(vst3sdk SYSTEM PUBLIC ${ZKR_VST3_SDK})
target_compile_definitions(vst3sdk PUBLIC RELEASE=1)
target_compile_options(vst3sdk PRIVATE -w)
if(WIN32)
  target_link_libraries(vst3sdk PUBLIC ole32)
endif()
