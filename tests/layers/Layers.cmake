# SPDX-License-Identifier: GPL-3.0-or-later
# Each floor may include what lies below it and nothing else. For every library a header of its own must
# build with the include roots that the library has, and headers of rooms that it must not know must not be
# found there.

# lodex_layer(<library> OWN <header> NOT <header>...)
function(lodex_layer library)
  cmake_parse_arguments(LAYER "" "OWN" "NOT" ${ARGN})
  foreach(header IN LISTS LAYER_NOT)
    if(NOT EXISTS ${PROJECT_SOURCE_DIR}/${header} AND NOT EXISTS ${PROJECT_SOURCE_DIR}/SDKs/${header})
      message(FATAL_ERROR "layers: there is no ${header}")
    endif()
  endforeach()
  set(probe layer_${library})
  add_library(${probe} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_SOURCE_DIR}/layers/probe.cpp)
  target_link_libraries(${probe} PRIVATE ${library})
  add_test(NAME layers.${library}
    COMMAND ${CMAKE_COMMAND}
      -DCOMPILER=${CMAKE_CXX_COMPILER}
      "-DDEFINITIONS=$<JOIN:$<TARGET_PROPERTY:${probe},COMPILE_DEFINITIONS>,|>"
      "-DROOTS=$<JOIN:$<TARGET_PROPERTY:${probe},INCLUDE_DIRECTORIES>,|>"
      -DOWN=${LAYER_OWN}
      "-DNOT=$<JOIN:${LAYER_NOT},|>"
      -DPROBE=${CMAKE_CURRENT_SOURCE_DIR}/layers/probe.cpp
      -P ${CMAKE_CURRENT_SOURCE_DIR}/layers/CheckLayer.cmake)
endfunction()

lodex_layer(core OWN CORE/Relaxed.h
  NOT Sonvex/String.h DSP/dsp_Math.h Orbel/storage/Packing.h)
lodex_layer(dsp OWN DSP/dsp_Math.h
  NOT Orbel/contract/AudioStereoBus.h effect/engine/ExactGain.h)
lodex_layer(sonvex OWN Sonvex/String.h
  NOT Orbel/storage/Packing.h Tovrane/base/CRect.h)
lodex_layer(orbel_storage OWN Orbel/storage/Packing.h
  NOT Orbel/parameters/ParameterProperty.h Orbel/contract/OrbelOS.h presets/OlderChunks.h)
lodex_layer(orbel_parameters OWN Orbel/parameters/ParameterProperty.h
  NOT Orbel/contract/OrbelOS.h Tovrane/base/CRect.h effect/parameters/DKS_Mini.h)
lodex_layer(orbel_contract OWN Orbel/contract/OrbelOS.h
  NOT Orbel/storage/Packing.h Orbel/Wrapper/VST3/Orbel_VST3.h Tovrane/base/CRect.h
      effect/instance/CQDT_DKS_Single.h)
lodex_layer(wrapper_vst3 OWN Orbel/Wrapper/VST3/Orbel_VST3.h
  NOT effect/instance/CQDT_DKS_Single.h presets/IPresetInterface.h Tovrane/views/tree/CFrame.h)
lodex_layer(tovra_base OWN Tovrane/base/CRect.h
  NOT Tovrane/draw/CColor.h Orbel/parameters/ParameterProperty.h)
lodex_layer(tovra_scope OWN Tovrane/scope/IScopeDataProvider.h
  NOT Tovrane/base/CRect.h Tovrane/draw/CColor.h Orbel/contract/OrbelOS.h)
lodex_layer(tovra_fonts OWN Tovrane/lib/decompose_ft.h
  NOT Tovrane/draw/PelmoText.h Tovrane/base/CRect.h)
lodex_layer(tovra_draw OWN Tovrane/draw/CDrawContext.h
  NOT Tovrane/window/IFrame.h Tovrane/views/tree/CFrame.h Orbel/parameters/ParameterProperty.h)
lodex_layer(tovra_window OWN Tovrane/window/IFrame.h
  NOT Tovrane/views/tree/CFrame.h Tovrane/platform/headless/HeadlessFrame.h)
lodex_layer(tovra_tree OWN Tovrane/views/tree/CFrame.h
  NOT Tovrane/views/controls/CMenuItem.h Tovrane/platform/headless/HeadlessFrame.h
      Orbel/contract/OrbelOS.h)
lodex_layer(tovra_scope_view OWN Tovrane/views/scope/CNewScopeRenderer.h
  NOT Tovrane/views/tree/CFrame.h Orbel/contract/OrbelOS.h)
lodex_layer(tovra_controls OWN Tovrane/views/controls/CMenuItem.h
  NOT Tovrane/shell/CTovraneEditor.h Tovrane/platform/parts/MenuRows.h Orbel/contract/OrbelOS.h)
lodex_layer(tovra_envelope OWN Tovrane/views/envelope/Tovra_EnvelopeDisplay.h
  NOT Tovrane/shell/CTovraneEditor.h Orbel/contract/OrbelOS.h)
lodex_layer(tovra_shell OWN Tovrane/shell/CTovraneEditor.h
  NOT Tovrane/platform/headless/HeadlessFrame.h Orbel/Wrapper/VST3/Orbel_VST3.h
      effect/instance/CQDT_DKS_Single.h)
lodex_layer(tovra_parts OWN Tovrane/platform/parts/MenuRows.h
  NOT Tovrane/platform/headless/HeadlessFrame.h Tovrane/platform/x11/frame/X11Frame.h)
lodex_layer(tovra_panels OWN Tovrane/platform/panels/FilePanel.h
  NOT Tovrane/platform/headless/HeadlessFrame.h Tovrane/platform/x11/overlays/X11OverlayHost.h)
lodex_layer(tovra_headless OWN Tovrane/platform/headless/HeadlessFrame.h
  NOT Tovrane/platform/panels/FilePanel.h Tovrane/platform/x11/frame/X11Frame.h effect/instance/CQDT_DKS_Single.h)
lodex_layer(tovra_x11_connection OWN Tovrane/platform/x11/connection/X11Connection.h
  NOT Tovrane/platform/x11/surface/X11Surface.h Tovrane/platform/x11/exchange/X11Transfer.h
      Tovrane/platform/headless/HeadlessFrame.h)
lodex_layer(tovra_x11_surface OWN Tovrane/platform/x11/surface/X11Surface.h
  NOT Tovrane/platform/x11/exchange/X11Transfer.h Tovrane/platform/x11/overlays/X11OverlayHost.h)
lodex_layer(tovra_x11_exchange OWN Tovrane/platform/x11/exchange/X11Transfer.h
  NOT Tovrane/platform/x11/surface/X11Surface.h Tovrane/platform/x11/overlays/X11OverlayHost.h)
lodex_layer(tovra_x11_overlays OWN Tovrane/platform/x11/overlays/X11OverlayHost.h
  NOT Tovrane/platform/x11/frame/X11Frame.h Tovrane/platform/headless/HeadlessFrame.h)
lodex_layer(tovra_x11 OWN Tovrane/platform/x11/frame/X11Frame.h
  NOT Tovrane/platform/headless/HeadlessFrame.h effect/instance/CQDT_DKS_Single.h)
lodex_layer(parameters OWN effect/parameters/DKS_Mini.h
  NOT Orbel/contract/OrbelOS.h effect/engine/CAHRModule2.h presets/IPresetInterface.h)
lodex_layer(engine OWN effect/engine/CAHRModule2.h
  NOT effect/instance/CQDT_DKS_Single.h presets/IPresetInterface.h Orbel/storage/Packing.h
      effect/parameters/DKS_Mini.h)
lodex_layer(presets OWN presets/IPresetInterface.h
  NOT effect/instance/CQDT_DKS_Single.h effect/engine/CAHRModule2.h Tovrane/base/CRect.h)
lodex_layer(editor_display OWN editor/display/CEnvelopeDisplaySingle.h
  NOT Tovrane/shell/CTovraneEditor.h Tovrane/platform/headless/HeadlessFrame.h tools/common/Text.h)
lodex_layer(editor_system OWN editor/system/CSysPageDisplay.h
  NOT Tovrane/shell/CTovraneEditor.h Tovrane/platform/headless/HeadlessFrame.h
      Tovrane/platform/parts/ChildProcess.h)
lodex_layer(editor_window OWN editor/window/QDT_SingleSidechain_Editor.h
  NOT Tovrane/platform/headless/HeadlessFrame.h Orbel/Wrapper/VST3/Orbel_VST3.h tools/common/Text.h)
lodex_layer(editor_panel OWN editor/panel/Tovra_MiniDial.h
  NOT Tovrane/shell/CTovraneEditor.h Tovrane/platform/headless/HeadlessFrame.h effect/instance/CQDT_DKS_Single.h)
lodex_layer(editor OWN editor/wireUp.h
  NOT tools/common/Text.h Orbel/Wrapper/VST3/Orbel_VST3.h)
lodex_layer(tool_shot OWN tools/shot/ShotPlayer.h
  NOT tools/render/RenderEngine.h tools/gallery/GalleryPage.h Tovrane/shell/CTovraneEditor.h
      Tovrane/platform/x11/frame/X11Frame.h effect/instance/CQDT_DKS_Single.h)
lodex_layer(effect OWN effect/instance/CQDT_DKS_Single.h
  NOT Tovrane/base/CRect.h Tovrane/views/scope/CNewScopeRenderer.h Orbel/Wrapper/VST3/Orbel_VST3.h
      tools/common/Text.h HostSDK/VST3/Text.h)
