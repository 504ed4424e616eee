#pragma once

#include <BRIX/BaseMsgID.h>

#include <utility>

// Every message of the catalogue "tav:messages": key, number of arguments,
// and what the arguments are, in the order the raising code passes them. The
// texts lie in the catalogue file share/tav/catalogues/tav/messages.txt, which
// a test holds to this list.
#define TAV_MESSAGES(X)                                                                                           \
    X(TAV_LoadModule_Error, 2, "module path, loader's error text")                                               \
    X(TAV_UnloadModule_Error, 2, "module path, loader's error text")                                             \
    X(TAV_PathMapManager_NonPortableUri, 1, "uri")                                                                \
    X(TAV_Serializer_PathMapManager_InvalidPath, 2, "path, scheme name")                                         \
    X(TAV_Serializer_PathMapManager_PackFailure, 1, "path")                                                      \
    /* The attribute path and the reference path of the merger report alike: the exception's text first, then   \
       the object, what was set (a value's text or a target's name) and the property. */                         \
    X(TAV_Serializer_Merger_SetOrAddPropertyError, 4, "reason, object name, value or target name, property name") \
    X(TAV_Serializer_Merger_FactoryCreationError, 2, "domain uri, type name")                                    \
    X(TAV_Serializer_Merger_ValueObjectCreationError, 4, "object name, type name, property name, text")          \
    X(TAV_Serializer_XmiReader_PropertyCreationError, 3, "namespace uri, property name, object name")            \
    X(TAV_Serializer_XmiReader_InvalidTopLevelElement, 2, "element name, namespace uri")                         \
    /* Raised by no reader of the library: kept for readers that miss a property with no source position at     \
       hand, taking the first two arguments of the located form. */                                               \
    X(TAV_Serializer_XmiReader_InvalidProperty, 2, "property name, metaclass qualified name")                    \
    X(TAV_Serializer_XmiReader_InvalidProperty_Location, 4, "property name, metaclass qualified name, file, line") \
    X(TAV_Serializer_XmiReader_EmptyValueElement, 2, "property name, object name")                               \
    /* The one thing the reader holds that names the stray object: the whole URI it looked up. */                 \
    X(TAV_Serializer_XmiReader_TargetModelInconsistency, 1, "uri#fragment")                                      \
    X(TAV_Serializer_XmiReader_TargetModelReferenceError, 1, "uri")                                              \
    X(TAV_Serializer_XmiReader_AutosarReferenceResolutionError, 4, "source uri or name, property name, id, location") \
    X(TAV_Serializer_XmiReader_ReferenceResolutionError, 4, "source uri or name, property name, id, location")   \
    X(TAV_Serializer_XmiReader_ModelUriSetError, 2, "uri error text, path")                                      \
    X(TAV_Serializer_XmiReader_ReadError, 4, "file, line, column, parser's error text")                          \
    X(TAV_Serializer_XmiReader_NamespacePrefixNotFound, 1, "prefix")                                             \
    X(TAV_Serializer_XmiReader_InvalidXmiTypeFormat, 1, "xmi:type value")                                        \
    X(TAV_Serializer_XmiReader_InvalidMode, 1, "format name")                                                    \
    X(TAV_Serializer_XmiReader_EmptyFileList, 0, "")                                                             \
    X(TAV_Serializer_XmiReader_InvalidBaseUri, 1, "uri")                                                         \
    X(TAV_Serializer_XmiReader_UriResolutionError, 3, "uri error text, uri, base uri")                           \
    X(TAV_Serializer_XmiReader_InvalidInputFile, 1, "path")                                                      \
    X(TAV_Serializer_XmiReader_TypeMismatch, 5,                                                                  \
      "value name, value's metaclass qualified name, object name, property name, property type qualified name")  \
    X(TAV_Serializer_XmiWriter_InvalidBaseUri, 1, "uri")                                                         \
    X(TAV_Serializer_XmiWriter_InvalidObject, 3, "model uri, object id, property name")                          \
    X(TAV_Serializer_XmiWriter_RelativeUriResolutionError, 2, "target uri, base uri")                            \
    X(TAV_Serializer_XmiWriter_NonPortableUri, 3, "target uri, base uri, scheme name")                           \
    /* The writer passes the URI twice: the first names the missing prefix, the second the type's domain. */     \
    X(TAV_Serializer_XmiWriter_UriLookup, 3, "uri, uri, type name")                                              \
    X(TAV_Serializer_XmiWriter_GenericError, 1, "path")                                                          \
    X(TAV_Serializer_XmiWriter_FileOpen, 1, "path")

namespace tav::messages {

inline constexpr const char* kCatalogue = "tav:messages";

// What a message's argument list takes: UTF-16 or UTF-8 texts, integers or reals.
template<class A>
concept MessageArgument = requires(BRIX::BaseMsgID& message, A&& argument) {
    message.addArgument(std::forward<A>(argument));
};

// One class per key, taking its arguments in order. The count is part of the
// constructor's signature, so a call with the wrong count does not compile.
#define TAV_DECLARE_MESSAGE(Key, Arity, Arguments)                                 \
    class Key : public BRIX::BaseMsgID {                                           \
    public:                                                                        \
        static constexpr int kArity = Arity;                                       \
        static constexpr const char* kArguments = Arguments;                       \
        template<MessageArgument... A>                                             \
            requires(sizeof...(A) == Arity)                                        \
        explicit Key(A&&... arguments) : BRIX::BaseMsgID(kCatalogue, #Key)         \
        {                                                                          \
            (addArgument(std::forward<A>(arguments)), ...);                        \
        }                                                                          \
    };
TAV_MESSAGES(TAV_DECLARE_MESSAGE)
#undef TAV_DECLARE_MESSAGE

} // namespace tav::messages
