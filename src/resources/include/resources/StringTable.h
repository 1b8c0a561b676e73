// The module's message catalogue: every text the module shows, by id.
#pragma once

#include <string>

namespace zarvel {

// The text of an id; an unknown id gives the empty string.
const std::wstring& loadString(int id);

inline constexpr int kMsgModuleName = 100;
inline constexpr int kMsgUnableToOpen = 101;
inline constexpr int kMsgDrawingAndTemplateFilter = 102;
inline constexpr int kMsgOperationUnsuccessful = 103;
inline constexpr int kMsgOperationCompleted = 104;
inline constexpr int kMsgSelected = 105;
inline constexpr int kMsgPromptModeFirstLast = 106;
inline constexpr int kMsgKeywordFirst = 107;
inline constexpr int kMsgKeywordLast = 108;
inline constexpr int kMsgInvalidParameters = 109;
inline constexpr int kMsgCompleted = 110;
inline constexpr int kMsgNoObjectsSelected = 111;
inline constexpr int kMsgCompletedOutOf = 112;
inline constexpr int kMsgPromptSelectObject = 113;
inline constexpr int kMsgNamedInvalidFormat = 114;
inline constexpr int kMsgInvalidFormat = 115;
inline constexpr int kMsgLayerNotFound = 116;
inline constexpr int kMsgNamedTableNotFound = 117;
inline constexpr int kMsgTextFileFilter = 118;
inline constexpr int kMsgPromptSelectObjects = 119;
inline constexpr int kMsgCompletedLengthAreaVolume = 120;
inline constexpr int kMsgUnableToLoadFeatureClass = 121;
inline constexpr int kMsgUnableToCopyTable = 122;
inline constexpr int kMsgColumnNotFound = 123;
inline constexpr int kMsgPromptPrecision = 124;
inline constexpr int kMsgInvalidPrecision = 125;
inline constexpr int kMsgAlreadyExists = 126;
inline constexpr int kMsgExistingDefinitionsWarning = 127;
inline constexpr int kMsgWarningCaption = 128;
inline constexpr int kMsgPromptTableWithDefault = 129;
inline constexpr int kMsgPromptTable = 130;
inline constexpr int kMsgTableNotFound = 131;
inline constexpr int kMsgPromptColor = 132;
inline constexpr int kMsgInvalidColor = 133;
inline constexpr int kMsgPromptLayer = 134;
inline constexpr int kMsgInvalidLayer = 135;
inline constexpr int kMsgPromptLinetype = 136;
inline constexpr int kMsgInvalidLinetype = 137;
inline constexpr int kMsgPromptClose = 138;
inline constexpr int kMsgDrawingFilter = 139;
inline constexpr int kMsgFileAlreadyActive = 140;
inline constexpr int kMsgUnreadableObjectsContinue = 141;
inline constexpr int kMsgNoFilesSelected = 142;
inline constexpr int kMsgInvalidType = 143;
inline constexpr int kMsgPromptConversionPrecision = 144;
inline constexpr int kMsgFieldHeader = 145;
inline constexpr int kMsgValueHeader = 146;
inline constexpr int kMsgErrorCaption = 147;
inline constexpr int kMsgNoObjectsSelectedBox = 148;
inline constexpr int kMsgDataMayNotMatchContinue = 149;
inline constexpr int kMsgDataDoesNotMatch = 150;
inline constexpr int kMsgDetachSelectedQuestion = 151;
inline constexpr int kMsgFirst = 152;
inline constexpr int kMsgLast = 153;
inline constexpr int kMsgCenter = 154;
inline constexpr int kMsgMin = 155;
inline constexpr int kMsgMax = 156;
inline constexpr int kMsgAverage = 157;
inline constexpr int kMsgFile = 158;
inline constexpr int kMsgNoDefaultValue = 159;
inline constexpr int kMsgStatsGraphicalObjects = 160;
inline constexpr int kMsgStatsObjects = 161;
inline constexpr int kMsgStatsObjectsWithoutData = 162;
inline constexpr int kMsgStatsObjectsWithData = 163;
inline constexpr int kMsgStatsDuplicatedData = 164;
inline constexpr int kMsgStatsMultipleData = 165;
inline constexpr int kMsgStatsObjectData = 166;
inline constexpr int kMsgStatsUnusedData = 167;
inline constexpr int kMsgCompletedOutOfRangeMultiple = 168;
inline constexpr int kMsgCompletedOutOfRange = 169;
inline constexpr int kMsgCompletedMultiple = 170;
inline constexpr int kMsgDuplicateColumnNames = 171;
inline constexpr int kMsgTableDoesNotMatch = 172;
inline constexpr int kMsgOverwriteFileQuestion = 173;
inline constexpr int kMsgTableDoesNotMatchContinue = 174;
inline constexpr int kMsgStatisticsTitle = 175;
inline constexpr int kMsgSelectWithSpecificData = 176;
inline constexpr int kMsgSelectWithoutSpecificData = 177;
inline constexpr int kMsgSelectedOpenList = 178;
inline constexpr int kMsgPromptReferenceObject = 179;
inline constexpr int kMsgDetachAllContinue = 180;

inline constexpr int kFirstMessageId = kMsgModuleName;
inline constexpr int kLastMessageId = kMsgDetachAllContinue;

}  // namespace zarvel
