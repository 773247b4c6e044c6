// The JSON job reader and the queries that it answers.
#pragma once

#include <json/value.h>

#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "model/job_records.h"
#include "model/query_rows.h"

// --- names fixed by the host and the scripts -----------------------------------------------------

/// Reads JSON job files into records and answers questions about the job read last.
///
/// One object lives as long as the plug-in and is refilled by every read. Only the list of bars is
/// emptied per file: a key that is missing from an element leaves the value of the element before
/// it, or of the file before, in place. Not safe for use from two threads at once.
///
/// The readers answer with 0 or a negative code: -2 no such file or not JSON, -3 header, -4 bars,
/// -5 pieces, -6 works. A failing level writes one line to standard output, innermost first.
class JsonAnalysis {
 public:
  JsonAnalysis();

  /// Downloads `url` to the flash directory as `name` + ".json" and reads that file. A failed
  /// download is answered with the downloader's own negative code, the job untouched.
  int getJson(std::string url, std::string name);

  /// Reads the job file at `path`. After -2 the job is untouched; after -3 it has no bars and the
  /// header of the file before; after -4 it has no bars and the new header.
  int jsonAnalysis(std::string path);

  /// The levels of a job file, from the header down. `version` must be "1.0"; another one fails at
  /// the levels of bars, pieces and works, and leaves the other two without effect.
  int analysisData(Json::Value root);  ///< the header, then all below; fills `data`
  int analysisBar(Json::Value bars, std::string version);      ///< an array, appended to `data.Bar`
  int analysisPiece(Json::Value pieces, std::string version);  ///< an array, appended to `curBar`
  int analysisField(Json::Value piece, std::string version);   ///< label fields, into `curField`
  int analysisCut(Json::Value piece, std::string version);     ///< the piece's cut, into `curCut`
  int analysisWork(Json::Value works, std::string version);    ///< an array, appended to `curPiece`

  /// The works of every piece that bears the barcode. Empty for a job of another version.
  std::list<WORK_T> getWork(std::string barCode);

  /// Every work of the job with the barcode of its piece.
  std::list<std::pair<std::string, WORK_T>> getAllWork();

  /// The cuts of every bar with that number, without piece numbers. Empty for another version.
  std::list<RETURNACUT_T> getCut(std::string barNumber);

  /// All cuts of the job. Also refills `materialList`, one number per cut; throws
  /// std::invalid_argument or std::out_of_range ("stoi") for a bar number that is none, and
  /// `materialList` then ends before it.
  std::list<RETURNACUT_T> getAllCut();

  /// The highest number in `materialList`, 0 when that is empty.
  int getMaterialCount();

  /// Sets `height` to the MaxZ of the first bar. -1, and `height` untouched, for a job of another
  /// version or without bars.
  int getHeight(std::string& height);

  /// The dimensions of the first piece with that barcode. -1, a line on standard output and the
  /// texts untouched when there is none, or for a job of another version.
  int getMaxYZ_Cutlength(std::string barCode, std::string& maxY, std::string& maxZ,
                         std::string& cutLength);

  /// The distinct works of the job. Throws std::invalid_argument or std::out_of_range ("stod") for
  /// a dimension that is no number; `holeList` then keeps what was found before.
  std::vector<tagHOHEINFO> getHole();

  /// One label per piece.
  std::list<PRINT_T> getPrint();

  /// Rebuilds `barCodeMap` from the job. Of pieces with equal numbers the last one wins.
  void getAllBarCodeToMap();

  /// The barcode of a piece as of the last rebuild. An unknown piece gives an empty text, and from
  /// then on has an empty entry in the map.
  std::string getBarCode(const std::string& barNumber, const std::string& pieceNumber);

  DATA_T data;  ///< the job read last

  // The elements under construction. They are never cleared: that is what carries values over.
  BAR_T curBar;                   ///< its pieces move into the job with it
  PIECE_CHILD_SECOND_T curPiece;  ///< its works move into its bar with it
  CUT_T curCut;
  FIELD_T curField;
  WORK_T curWork;

  std::vector<tagHOHEINFO> holeList;  ///< what `getHole` found last
  /// Bar number to piece number to barcode.
  std::map<std::string, std::map<std::string, std::string>> barCodeMap;
  std::vector<int> materialList;  ///< the bar number of every cut
};

// -------------------------------------------------------------------------------------------------

/// Empties the reader's `materialList` and refills it, as `getAllCut` does, without making rows.
void refillMaterialList(JsonAnalysis& reader);
