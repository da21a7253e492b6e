# The interface that the file formats implement, without the rest of data/ (which lies above them).
add_library(quillform_storage INTERFACE)
add_library(quillform::storage ALIAS quillform_storage)
set(storageRoot ${CMAKE_BINARY_DIR}/include/quillform_storage)
file(MAKE_DIRECTORY ${storageRoot}/data)
file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/data/Storage.h ${storageRoot}/data/Storage.h SYMBOLIC)
target_include_directories(quillform_storage INTERFACE ${storageRoot})
target_link_libraries(quillform_storage INTERFACE quillform::model)
