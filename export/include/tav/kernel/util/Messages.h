#pragma once

#include <BRIX/BaseMsgID.h>

#include <utility>

// Every message of the catalogue "tav:messages": key, number of arguments,
// and what the arguments are. The texts lie in the catalogue file
// share/tav/catalogues/tav/messages.txt, which a test holds to this list.
#define TAV_MESSAGES(X)                                                                        \
    X(TAV_LoadModule_Error, 2, "module, reason")                                               \
    X(TAV_UnloadModule_Error, 2, "module, reason")                                             \
    X(TAV_PathMapManager_NonPortableUri, 1, "uri")                                             \
    X(TAV_Serializer_PathMapManager_InvalidPath, 1, "path")                                    \
    X(TAV_Serializer_PathMapManager_PackFailure, 2, "uri, reason")                             \
    X(TAV_Serializer_Merger_SetOrAddPropertyError, 3, "property, element id, reason")          \
    X(TAV_Serializer_Merger_FactoryCreationError, 2, "metaclass, domain")                      \
    X(TAV_Serializer_Merger_ValueObjectCreationError, 2, "value, type")                        \
    X(TAV_Serializer_XmiReader_PropertyCreationError, 2, "property, element id")               \
    X(TAV_Serializer_XmiReader_InvalidTopLevelElement, 1, "element")                           \
    X(TAV_Serializer_XmiReader_InvalidProperty, 2, "property, metaclass")                      \
    X(TAV_Serializer_XmiReader_InvalidProperty_Location, 5, "property, metaclass, file, line, column") \
    X(TAV_Serializer_XmiReader_EmptyValueElement, 1, "property")                               \
    X(TAV_Serializer_XmiReader_TargetModelInconsistency, 1, "model uri")                       \
    X(TAV_Serializer_XmiReader_TargetModelReferenceError, 2, "reference, model uri")           \
    X(TAV_Serializer_XmiReader_AutosarReferenceResolutionError, 2, "reference, path")          \
    X(TAV_Serializer_XmiReader_ReferenceResolutionError, 2, "reference, property")             \
    X(TAV_Serializer_XmiReader_ModelUriSetError, 1, "uri")                                     \
    X(TAV_Serializer_XmiReader_ReadError, 2, "file, reason")                                   \
    X(TAV_Serializer_XmiReader_NamespacePrefixNotFound, 1, "prefix")                           \
    X(TAV_Serializer_XmiReader_InvalidXmiTypeFormat, 1, "xmi:type value")                      \
    X(TAV_Serializer_XmiReader_InvalidMode, 1, "mode")                                         \
    X(TAV_Serializer_XmiReader_EmptyFileList, 0, "")                                           \
    X(TAV_Serializer_XmiReader_InvalidBaseUri, 1, "uri")                                       \
    X(TAV_Serializer_XmiReader_UriResolutionError, 2, "uri, base uri")                         \
    X(TAV_Serializer_XmiReader_InvalidInputFile, 1, "file")                                    \
    X(TAV_Serializer_XmiReader_TypeMismatch, 3, "element id, expected type, actual type")      \
    X(TAV_Serializer_XmiWriter_InvalidBaseUri, 1, "uri")                                       \
    X(TAV_Serializer_XmiWriter_InvalidObject, 1, "object")                                     \
    X(TAV_Serializer_XmiWriter_RelativeUriResolutionError, 2, "uri, base uri")                 \
    X(TAV_Serializer_XmiWriter_NonPortableUri, 1, "uri")                                       \
    X(TAV_Serializer_XmiWriter_UriLookup, 1, "object")                                         \
    X(TAV_Serializer_XmiWriter_GenericError, 1, "reason")                                      \
    X(TAV_Serializer_XmiWriter_FileOpen, 2, "file, reason")

namespace tav::messages {

inline constexpr const char* kCatalogue = "tav:messages";

// One class per key, taking the arguments in order: UTF-16 or UTF-8 texts,
// integers or reals. The wrong number of arguments does not compile.
#define TAV_DECLARE_MESSAGE(Key, Arity, Arguments)                                               \
    class Key : public BRIX::BaseMsgID {                                                         \
    public:                                                                                      \
        static constexpr int kArity = Arity;                                                     \
        template<class... A>                                                                     \
        explicit Key(A&&... arguments) : BRIX::BaseMsgID(kCatalogue, #Key)                       \
        {                                                                                        \
            static_assert(sizeof...(A) == Arity, #Key " takes " #Arity " argument(s): " Arguments); \
            (addArgument(std::forward<A>(arguments)), ...);                                      \
        }                                                                                        \
    };
TAV_MESSAGES(TAV_DECLARE_MESSAGE)
#undef TAV_DECLARE_MESSAGE

} // namespace tav::messages
