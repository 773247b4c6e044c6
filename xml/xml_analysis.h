// The XML job reader and the queries that it answers.
#pragma once

#include <list>
#include <string>
#include <utility>
#include <vector>

#include "model/job_records.h"
#include "model/query_rows.h"

namespace tinyxml2 {
class XMLElement;
}

// --- names fixed by the host and the scripts -----------------------------------------------------

/// Reads XML job files into records and answers questions about the job read last.
///
/// One object lives as long as the plug-in and is refilled by every read. Only the list of bars is
/// emptied per file: a text that is missing leaves the value of the element before it, or of the
/// file before, in place. Not safe for use from two threads at once.
///
/// Four numbers of a work and the element "CtrsZ" must have a text: std::logic_error
/// ("basic_string::_M_construct null not valid") is thrown where they have none, and
/// std::invalid_argument or std::out_of_range ("stod") where a number is none. The bars finished
/// before then stay in the job; the one under construction is dropped.
class XmlAnalysis {
 public:
  XmlAnalysis();

  /// Downloads `url` without keeping it, then reads a file without a name: an answer below 0 in
  /// every case but for a host that gives an empty name a meaning. `name` is not used.
  int getXml(std::string url, std::string name);

  /// Reads the job file at `path`. 0, or -2 with a line on standard output and the job untouched
  /// when there is no such file or it is not XML.
  int xmlAnalysis(std::string path);

  /// The levels of a job file. Each takes the element whose children it reads and returns 0. None
  /// tests the version: that decides which queries answer, not what is read.
  int analysisData(tinyxml2::XMLElement* root);   ///< the header, then all below; fills `data`
  int analysisBar(tinyxml2::XMLElement* root);    ///< the bars, appended to `data.Bar`
  int analysisPiece(tinyxml2::XMLElement* bar);   ///< the pieces, appended to `curBar`
  int analysisCut(tinyxml2::XMLElement* piece);   ///< the cuts, into `curCut` and `curPiece`
  int analysisWork(tinyxml2::XMLElement* piece);  ///< the works, appended to `curPiece`

  /// The works of every piece that bears the barcode. Empty for a job of another version.
  std::list<WORK_T> getWork(std::string barCode);

  /// Every work of the job with the barcode of its piece.
  std::list<std::pair<std::string, WORK_T>> getAllWork();

  /// The cuts of every bar with that number, without piece numbers. Empty for another version.
  std::list<RETURNACUT_T> getCut(std::string barNumber);

  /// All cuts of the job. Converts no number.
  std::list<RETURNACUT_T> getAllCut();

  /// The dimensions of the first piece with that barcode. -1, a line on standard output and the
  /// texts untouched when there is none, or for a job of another version.
  int getMaxYZ_Cutlength(std::string barCode, std::string& maxY, std::string& maxZ,
                         std::string& cutLength);

  /// The distinct works of the job. Not offered to scripts. Throws std::invalid_argument or
  /// std::out_of_range ("stod") for a dimension that is no number.
  std::vector<tagHOHEINFO> getHole();

  /// One label per piece.
  std::list<PRINT_T> getPrint();

  /// The barcode of the last piece with these numbers, empty when there is none. Not offered to
  /// scripts.
  std::string getBarCode(const std::string& barNumber, const std::string& pieceNumber);

  DATA_T data;  ///< the job read last

  // The elements under construction. They are never cleared: that is what carries values over.
  BAR_T curBar;                   ///< its pieces move into the job with it
  PIECE_CHILD_SECOND_T curPiece;  ///< its works move into its bar with it
  CUT_T curCut;
  FIELD_T curField;  ///< not used: XML jobs have no label fields
  WORK_T curWork;

  std::list<std::string> scratchList;  ///< what `getHole` or `getBarCode` found last
};
