// The module's message catalogue: every text the module shows, by id, with
// the kinds of the values its placeholders take. A text is printed only
// through its typed id, so that the compiler checks every use against the
// text's placeholders, and a test checks each text against its kinds.
#pragma once

#include <string>
#include <string_view>

namespace zarvel {

// The value a "%s" of a text takes.
using Text = std::wstring_view;

// The id of a catalogue text whose placeholders take Args, in order.
template <typename... Args>
struct Message {
  int id;
};

// The string table: X(name, id, (argument kinds), text), in id order.
#define ZARVEL_STRING_TABLE(X) \
  X(kMsgModuleName, 100, (), L"zarvel") \
  X(kMsgUnableToOpen, 101, (Text), L"Error: unable to open '%s'.\n") \
  X(kMsgDrawingAndTemplateFilter, 102, (), \
    L"Drawings; Drawing Templates (*.dwg;*.dwt)|*.dwg;*.dwt||") \
  X(kMsgOperationUnsuccessful, 103, (), L"Error. Operation unsuccessful.\n") \
  X(kMsgOperationCompleted, 104, (), L"Operation completed.\n") \
  X(kMsgSelected, 105, (int), L"Selected: %i\n") \
  X(kMsgPromptModeFirstLast, 106, (), L"Mode (First, Last)<First>: ") \
  X(kMsgKeywordFirst, 107, (), L"first") \
  X(kMsgKeywordLast, 108, (), L"last") \
  X(kMsgInvalidParameters, 109, (), L"Error: invalid parameters.\n") \
  X(kMsgCompleted, 110, (int), L"Completed: %i\n") \
  X(kMsgNoObjectsSelected, 111, (), L"Error: no objects selected.\n") \
  X(kMsgCompletedOutOf, 112, (int, int), L"Completed: %i out of %i\n") \
  X(kMsgPromptSelectObject, 113, (), L"Select object: ") \
  X(kMsgNamedInvalidFormat, 114, (Text), L"Error: '%s': invalid format.\n") \
  X(kMsgInvalidFormat, 115, (), L"Error: invalid format.\n") \
  X(kMsgLayerNotFound, 116, (Text), L"Warning: layer '%s' not found.\n") \
  X(kMsgNamedTableNotFound, 117, (Text), L"Error: table '%s' not found.\n") \
  X(kMsgTextFileFilter, 118, (), L"Text files (*.txt)|*.txt||") \
  X(kMsgPromptSelectObjects, 119, (), L"Select objects: ") \
  X(kMsgCompletedLengthAreaVolume, 120, (int, int, int, int), \
    L"Completed (Length/Area/Volume): %i/%i/%i out of %i\n") \
  X(kMsgUnableToLoadFeatureClass, 121, (Text), L"Error: unable to load feature class '%s'.\n") \
  X(kMsgUnableToCopyTable, 122, (Text), L"Error: unable to copy table '%s'.\n") \
  X(kMsgColumnNotFound, 123, (), L"Error: column not found.\n") \
  X(kMsgPromptPrecision, 124, (), L"Precision [1-99]<10>: ") \
  X(kMsgInvalidPrecision, 125, (), L"Error: invalid precision.\n") \
  X(kMsgAlreadyExists, 126, (Text), L"Warning: '%s' already exists.\n") \
  X(kMsgExistingDefinitionsWarning, 127, (), \
    L"Active document contains Object Data definitions which can cause errors during " \
    L"program operation. Recommend removal of existing Object Data definitions.\n") \
  X(kMsgWarningCaption, 128, (), L"Warning") \
  X(kMsgPromptTableWithDefault, 129, (Text), L"Table <%s>: ") \
  X(kMsgPromptTable, 130, (), L"Table: ") \
  X(kMsgTableNotFound, 131, (), L"Error: table not found.\n") \
  X(kMsgPromptColor, 132, (), L"Color<ByLayer>: ") \
  X(kMsgInvalidColor, 133, (), L"Error: invalid color.\n") \
  X(kMsgPromptLayer, 134, (), L"Layer<") \
  X(kMsgInvalidLayer, 135, (), L"Error: invalid layer.\n") \
  X(kMsgPromptLinetype, 136, (), L"Linetype<") \
  X(kMsgInvalidLinetype, 137, (), L"Error: invalid linetype.\n") \
  X(kMsgPromptClose, 138, (), L"Close<0>: ") \
  X(kMsgDrawingFilter, 139, (), L"Drawings (*.dwg)|*.dwg||") \
  X(kMsgFileAlreadyActive, 140, (), L"Error: selected file already active.\n") \
  X(kMsgUnreadableObjectsContinue, 141, (int), L"Unable to read %i object(s). Continue?") \
  X(kMsgNoFilesSelected, 142, (), L"Error: no files selected.\n") \
  X(kMsgInvalidType, 143, (Text, Text), L"Error: '%s':'%s': invalid type.\n") \
  X(kMsgPromptConversionPrecision, 144, (), L"Precision [0-99]<0> (> 0 - enable conversion): ") \
  X(kMsgFieldHeader, 145, (), L"Field") \
  X(kMsgValueHeader, 146, (), L"Value") \
  X(kMsgErrorCaption, 147, (), L"Error") \
  X(kMsgNoObjectsSelectedBox, 148, (), L"No objects selected.") \
  X(kMsgDataMayNotMatchContinue, 149, (), L"Data may not match existing definitions. Continue?") \
  X(kMsgDataDoesNotMatch, 150, (), L"Data does not match existing definitions.") \
  X(kMsgDetachSelectedQuestion, 151, (), L"Detach selected Object Data?") \
  X(kMsgFirst, 152, (), L"First") \
  X(kMsgLast, 153, (), L"Last") \
  X(kMsgCenter, 154, (), L"Center") \
  X(kMsgMin, 155, (), L"Min") \
  X(kMsgMax, 156, (), L"Max") \
  X(kMsgAverage, 157, (), L"Average") \
  X(kMsgFile, 158, (), L"File") \
  X(kMsgNoDefaultValue, 159, (Text), L"Error: unable to retrieve default value of '%s'.\n") \
  X(kMsgStatsGraphicalObjects, 160, (), L"Graphical objects with Object Data:\n") \
  X(kMsgStatsObjects, 161, (int), L"Objects: %i\n") \
  X(kMsgStatsObjectsWithoutData, 162, (int), L"Objects with no Object Data: %i\n") \
  X(kMsgStatsObjectsWithData, 163, (int), L"Objects with Object Data: %i\n") \
  X(kMsgStatsDuplicatedData, 164, (int), L"Objects containing duplicated Object Data: %i\n") \
  X(kMsgStatsMultipleData, 165, (int), L"Objects containing multiple Object Data: %i\n") \
  X(kMsgStatsObjectData, 166, (int), L"Object Data: %i\n") \
  X(kMsgStatsUnusedData, 167, (int), L"Unused Object Data: %i\n") \
  X(kMsgCompletedOutOfRangeMultiple, 168, (int, int, int, int), \
    L"Completed: %i out of %i (%i out of range, %i multiple)\n") \
  X(kMsgCompletedOutOfRange, 169, (int, int, int), L"Completed: %i out of %i (%i out of range)\n") \
  X(kMsgCompletedMultiple, 170, (int, int, int), L"Completed: %i out of %i (%i multiple)\n") \
  X(kMsgDuplicateColumnNames, 171, (), L"Error: duplicate column names.\n") \
  X(kMsgTableDoesNotMatch, 172, (Text), \
    L"Error: table '%s' does not match existing definition.\n") \
  X(kMsgOverwriteFileQuestion, 173, (Text), L"File '%s' already exists. Overwrite?") \
  X(kMsgTableDoesNotMatchContinue, 174, (Text), \
    L"Table '%s' does not match existing definition. Continue?") \
  X(kMsgStatisticsTitle, 175, (), L"Object Data statistics.") \
  X(kMsgSelectWithSpecificData, 176, (), L"Select objects with specific OD.") \
  X(kMsgSelectWithoutSpecificData, 177, (), L"Select objects without specific OD.") \
  X(kMsgSelectedOpenList, 178, (int), L"Selected: %i ( ") \
  X(kMsgPromptReferenceObject, 179, (), L"Select reference object: ") \
  X(kMsgDetachAllContinue, 180, (), \
    L"This will detach ALL tables from selected objects. Continue?\n")

// The texts of the dialogs' templates: titles, labels and buttons, numbered
// from 1000 on so that they never meet the string table's ids.
#define ZARVEL_DIALOG_TEXTS(X)                                                                  \
  X(kDlgDetachOdTitle, 1000, (), L"Detach OD")                                                  \
  X(kDlgTablesLabel, 1001, (), L"Tables")                                                       \
  X(kDlgOk, 1002, (), L"OK")                                                                    \
  X(kDlgCancel, 1003, (), L"Cancel")                                                            \
  X(kDlgSelectAllNothing, 1004, (), L"Select all/nothing")                                      \
  X(kDlgObjectDataTitle, 1005, (), L"ObjectData")                                               \
  X(kDlgSimultaneous, 1006, (), L"Simultaneous")                                                \
  X(kDlgFindSpecificValuesTitle, 1020, (), L"Find entities with specific OD values")            \
  X(kDlgExtendedConditions, 1021, (), L"Extended (>, <, <>, *)")                                \
  X(kDlgAttachDetachTitle, 1022, (), L"Attach/detach OD")                                       \
  X(kDlgAttach, 1023, (), L"Attach")                                                            \
  X(kDlgDetach, 1024, (), L"Detach")                                                            \
  X(kDlgProgressLabel, 1025, (), L"ZARVEL")                                                     \
  X(kDlgSetXyzTitle, 1150, (), L"Set OD from object coordinates")                               \
  X(kDlgFieldX, 1151, (), L"X")                                                                 \
  X(kDlgFieldY, 1152, (), L"Y")                                                                 \
  X(kDlgFieldZ, 1153, (), L"Z")                                                                 \
  X(kDlgPlanMode, 1154, (), L"XY mode")                                                         \
  X(kDlgPlanFirst, 1155, (), L"First")                                                          \
  X(kDlgPlanLast, 1156, (), L"Last")                                                            \
  X(kDlgPlanCenter, 1157, (), L"Center")                                                        \
  X(kDlgHeightMode, 1158, (), L"Z mode")                                                        \
  X(kDlgHeightMin, 1159, (), L"Min")                                                            \
  X(kDlgHeightMax, 1160, (), L"Max")                                                            \
  X(kDlgHeightAverage, 1161, (), L"Average")                                                    \
  X(kDlgPrecision, 1162, (), L"Precision")                                                      \
  X(kDlgPrecisionZ, 1163, (), L"Z precision")                                                   \
  X(kDlgSetPropTitle, 1164, (), L"Set OD from object properties")                               \
  X(kDlgFieldLength, 1165, (), L"Length")                                                       \
  X(kDlgFieldArea, 1166, (), L"Area")                                                           \
  X(kDlgFieldVolume, 1167, (), L"Volume")                                                       \
  X(kDlgSetFromTextTitle, 1200, (), L"Set OD from text")                                        \
  X(kDlgTableLabel, 1201, (), L"Table")                                                         \
  X(kDlgFieldLabel, 1202, (), L"Field")                                                         \
  X(kDlgToleranceLabel, 1203, (), L"Tolerance:")                                                \
  X(kDlgGenerateIdsTitle, 1250, (), L"Generate IDs")                                            \
  X(kDlgPrefix, 1251, (), L"Prefix")                                                            \
  X(kDlgSuffix, 1252, (), L"Suffix")                                                            \
  X(kDlgFirst, 1253, (), L"First")                                                              \
  X(kDlgReplaceValuesTitle, 1254, (), L"Replace OD values")                                     \
  X(kDlgSearchFor, 1255, (), L"Search for")                                                     \
  X(kDlgReplaceWith, 1256, (), L"-->")                                                          \
  X(kDlgAddValuesTitle, 1257, (), L"Add OD values")                                             \
  X(kDlgTo, 1258, (), L"to")                                                                    \
  X(kDlgFrom, 1259, (), L"from")                                                                \
  X(kDlgFromTable, 1260, (), L"From table")                                                     \
  X(kDlgFromField, 1261, (), L"From field")                                                     \
  X(kDlgToTable, 1262, (), L"To table")                                                         \
  X(kDlgToField, 1263, (), L"To field")                                                         \
  X(kDlgRemoveUnusedTitle, 1300, (), L"Remove Unused OD")                                       \
  X(kDlgUsedLabel, 1301, (), L"Used:")                                                          \
  X(kDlgUnusedLabel, 1302, (), L"Unused:")                                                      \
  X(kDlgExplicationTitle, 1350, (), L"Explication")                                             \
  X(kDlgObjectTypeField, 1351, (), L"Object type field")                                        \
  X(kDlgSeparator, 1352, (), L"Separator")                                                      \
  X(kDlgCsvFilter, 1353, (), L"CSV files (*.csv)|*.csv||")                                      \
  X(kDlgTranslateTitle, 1400, (), L"ZARVEL_TRANSLATE")                                          \
  X(kDlgOdNameGroup, 1401, (), L"OD name")                                                      \
  X(kDlgFieldGroup, 1402, (), L"Field")                                                         \
  X(kDlgValuesGroup, 1403, (), L"Values")                                                       \
  X(kDlgChooseFile, 1404, (), L"...")                                                           \
  X(kDlgNameToAlias, 1405, (), L"Name --> Alias")                                               \
  X(kDlgAliasToName, 1406, (), L"Name <-- Alias")                                               \
  X(kMenuODManagementHeading, 1500, (), L"OD management")                                       \
  X(kMenuCopyDefinitionsFromFile, 1501, (), L"Copy definitions from file")                      \
  X(kMenuUsageStats, 1502, (), L"Usage stats")                                                  \
  X(kMenuTranslate, 1503, (), L"Translate")                                                     \
  X(kMenuRemoveUnused, 1504, (), L"Remove unused")                                              \
  X(kMenuSearchODHeading, 1505, (), L"Search OD")                                               \
  X(kMenuFindEntitiesWithNoOD, 1506, (), L"Find entities with no OD")                           \
  X(kMenuFindEntitiesWithOD, 1507, (), L"Find entities with OD")                                \
  X(kMenuFindEntitiesWithDuplicateOD, 1508, (), L"Find entities with duplicate OD")             \
  X(kMenuFindEntitiesWithMultipleOD, 1509, (), L"Find entities with multiple OD")               \
  X(kMenuFindEntitiesWithNoSpecificOD, 1510, (), L"Find entities with no specific OD")          \
  X(kMenuFindEntitiesWithSpecificOD, 1511, (), L"Find entities with specific OD")               \
  X(kMenuFindEntitiesWithSpecificODValues, 1512, (), L"Find entities with specific OD values")  \
  X(kMenuAttachDetachODHeading, 1513, (), L"Attach/detach OD")                                  \
  X(kMenuAttachDetach, 1514, (), L"Attach/detach")                                              \
  X(kMenuDetachAll, 1515, (), L"Detach all")                                                    \
  X(kMenuDetachSpecified, 1516, (), L"Detach specified")                                        \
  X(kMenuDetachDuplicate, 1517, (), L"Detach duplicate")                                        \
  X(kMenuCopyODHeading, 1518, (), L"Copy OD")                                                   \
  X(kMenuCopyODFromReference, 1519, (), L"Copy OD from reference")                              \
  X(kMenuCopyODValuesFromReference, 1520, (), L"Copy OD/values from reference")                 \
  X(kMenuCopyPropertiesODFromReference, 1521, (), L"Copy properties/OD from reference")         \
  X(kMenuCopyPropertiesODValuesFromReference, 1522, (),                                         \
    L"Copy properties/OD/values from reference")                                                \
  X(kMenuCopyValuesFromReference, 1523, (), L"Copy values from reference")                      \
  X(kMenuSetEditODValuesHeading, 1524, (), L"Set/edit OD values")                               \
  X(kMenuSetFromXYZ, 1525, (), L"Set from XYZ")                                                 \
  X(kMenuSetFromGeometricProperties, 1526, (), L"Set from geometric properties")                \
  X(kMenuSetFromText, 1527, (), L"Set from text")                                               \
  X(kMenuSetFromAttributes, 1528, (), L"Set from attributes")                                   \
  X(kMenuUploadToAttributes, 1529, (), L"Upload to attributes")                                 \
  X(kMenuCreateIDs, 1530, (), L"Create IDs")                                                    \
  X(kMenuReplace, 1531, (), L"Replace")                                                         \
  X(kMenuAddFromFieldInField, 1532, (), L"Add from field in field")                             \
  X(kMenuAddValuesFromODToOD, 1533, (), L"Add values from OD to OD")                            \
  X(kMenuModifyEntitiesHeading, 1534, (), L"Modify entities")                                   \
  X(kMenuCovertTo2DPolylines, 1535, (), L"Covert to 2D polylines")                              \
  X(kMenuConvertTo3DPolylines, 1536, (), L"Convert to 3D polylines")                            \
  X(kMenuBreak, 1537, (), L"Break")                                                             \
  X(kMenuExportImportHeading, 1538, (), L"Export/import")                                       \
  X(kMenuExplication, 1539, (), L"Explication")                                                 \
  X(kMenuODTableHeading, 1540, (), L"OD table")                                                 \
  X(kMenuAboutHeading, 1541, (), L"About")                                                      \
  X(kDlgAboutCaption, 1542, (), L"About")                                                       \
  X(kDlgAboutText, 1543, (),                                                                    \
    L"ZARVEL - Autodesk\u00AE AutoCAD\u00AE Civil 3D\u00AE and Map 3D\u00AE plugin for Object " \
    L"Data\n"                                                                                   \
    L"handling as an internal database.\n"                                                      \
    L"Made by the zarvel team.\n"                                                               \
    L"Version 1.125.2d\n")                                                                      \
  X(kDlgFindTitle, 1600, (), L"Find")                                                           \
  X(kDlgMatchWholeString, 1601, (), L"Match whole string")

// The texts commands print as they go, which the string table does not hold,
// numbered from 2000 on.
#define ZARVEL_COMMAND_TEXTS(X)                                                                    \
  X(kTxtLoadingTableAliases, 2000, (Text), L"Loading table aliases from '%s'\n")                   \
  X(kTxtIncorrectTableAlias, 2001, (Text), L"Error: incorrect table alias '%s'\n")                 \
  X(kTxtTableAliasesLoaded, 2002, (int), L"%i table aliases loaded\n")                             \
  X(kTxtUnableToRead, 2003, (Text), L"Error: unable to read '%s'\n")                               \
  X(kTxtDuplicateDestinationTable, 2004, (Text), L"Error: duplicate destination table '%s'\n")     \
  X(kTxtDuplicateDestinationTables, 2005, (), L"Error: duplicate destination table(s)\n")          \
  X(kTxtLoadingFieldAliases, 2006, (Text), L"Loading field aliases from '%s'\n")                   \
  X(kTxtIncorrectFieldAlias, 2007, (Text), L"Error: incorrect field alias '%s'\n")                 \
  X(kTxtFieldAliasesLoaded, 2008, (int), L"%i field aliases loaded\n")                             \
  X(kTxtLoadingValueAliases, 2009, (Text), L"Loading value aliases from '%s'\n")                   \
  X(kTxtIncorrectValueAlias, 2010, (Text), L"Error: incorrect value alias '%s'\n")                 \
  X(kTxtValueAliasesLoaded, 2011, (int), L"%i value aliases loaded\n")                             \
  X(kTxtDuplicateColumnNames, 2012, (), L"Error: duplicate column names.\n")                       \
  X(kTxtColumnNotFound, 2013, (), L"Error: column not found.\n")                                   \
  X(kTxtTableNotFound, 2014, (), L"Error: table not found.\n")                                     \
  X(kTxtUpdatedColumns, 2015, (int), L"Updated %i columns\n")                                      \
  X(kTxtUpdatedRecordsWithValues, 2016, (int), L"Updated %i records with new values\n")            \
  X(kTxtNoValidEntitiesSelected, 2100, (), L"No valid entities selected\n")                        \
  X(kTxtGeneratedTemplate, 2101, (int, int), L"Generated template for %i block(s), %i table(s)\n") \
  X(kTxtLoadingAttributesMap, 2102, (Text), L"Loading attributes map from '%s'\n")                 \
  X(kTxtInvalidMapping, 2103, (Text), L"Error: invalid mapping '%s'\n")                            \
  X(kTxtMapTableNotFound, 2104, (Text), L"Error: table %s not found\n")                            \
  X(kTxtMapColumnNotFound, 2105, (Text, Text), L"Error: column %s not found in table %s\n")        \
  X(kTxtAttributeMappingsLoaded, 2106, (int), L"%i attribute mappings loaded\n")                   \
  X(kTxtLoadedAttributes, 2107, (int, int), L"Loaded %i attribute(s) for %i block reference(s)\n") \
  X(kTxtLoadedDefinitions, 2108, (int, int), L"Loaded %i definition(s) for %i block reference(s)\n") \
  X(kTxtTextOrAllFilesFilter, 2110, (), L"Text files (*.txt)|*.txt|All files (*.*)|*.*||")

#define ZARVEL_UNPAREN(...) __VA_ARGS__
#define ZARVEL_DECLARE_MESSAGE(name, id, kinds, text) \
  inline constexpr Message<ZARVEL_UNPAREN kinds> name{id};
ZARVEL_STRING_TABLE(ZARVEL_DECLARE_MESSAGE)
ZARVEL_DIALOG_TEXTS(ZARVEL_DECLARE_MESSAGE)
ZARVEL_COMMAND_TEXTS(ZARVEL_DECLARE_MESSAGE)
#undef ZARVEL_DECLARE_MESSAGE

inline constexpr int kFirstMessageId = kMsgModuleName.id;
inline constexpr int kLastMessageId = kMsgDetachAllContinue.id;

// The text of an id; an unknown id gives the empty string.
const std::wstring& loadString(int id);
template <typename... Args>
const std::wstring& loadString(Message<Args...> message) {
  return loadString(message.id);
}

}  // namespace zarvel
