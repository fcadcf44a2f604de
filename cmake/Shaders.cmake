# Compiles HLSL programs ahead of time and embeds them.

include_guard(GLOBAL)

if(NOT WIN32)
  # Debian: glslang-tools, spirv-tools.
  find_program(GLSLANG_VALIDATOR glslangValidator REQUIRED)
  find_program(SPIRV_VAL spirv-val REQUIRED)
endif()

# velorinth_spirv(<target> STAGE vert|frag|comp SOURCE <file.hlsl> ENTRY <name>): compiles the program, has it validated, and lets the
# target include it as "<folder>/compiled/<Name>.inc", an array of words called k<Name>. What a source includes is
# tracked. Bindings: constant buffers from 0, textures from 16, samplers from 32, unordered-access views from 48, all in
# set 0, which is where Platform/Linux/Direct3D looks for the registers b, t, s and u.
function(velorinth_spirv target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "STAGE;SOURCE;ENTRY" "")
  if(NOT arg_ENTRY)
    set(arg_ENTRY main)
  endif()
  cmake_path(GET arg_SOURCE STEM name)
  cmake_path(GET arg_SOURCE PARENT_PATH folder)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE prefix)
  set(root ${CMAKE_BINARY_DIR}/shaders)
  set(compiled ${root}/${prefix}/${folder}/compiled)
  file(MAKE_DIRECTORY ${compiled})
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${arg_SOURCE})
  set(compile ${GLSLANG_VALIDATOR} -D -V --quiet -S ${arg_STAGE} -e ${arg_ENTRY} --shift-cbuffer-binding 0 --shift-texture-binding 16
              --shift-sampler-binding 32 --shift-image-binding 48)
  add_custom_command(
    OUTPUT ${compiled}/${name}.spv ${compiled}/${name}.inc
    COMMAND ${compile} --depfile ${compiled}/${name}.d -o ${compiled}/${name}.spv ${source}
    COMMAND ${SPIRV_VAL} --target-env vulkan1.0 ${compiled}/${name}.spv
    COMMAND ${compile} --vn k${name} -o ${compiled}/${name}.inc ${source}
    DEPENDS ${source}
    DEPFILE ${compiled}/${name}.d
    COMMENT "Compiling ${prefix}/${arg_SOURCE}"
    VERBATIM)
  target_sources(${target} PRIVATE ${compiled}/${name}.inc)
  target_include_directories(${target} PRIVATE ${root})
endfunction()
