// The cutting job in memory: a header that owns raw bars, which own the pieces cut from them.
//
// Plain values: a record owns everything inside it and knows nothing of its parent. Both readers
// fill these records, the queries read them. Texts are UTF-8 exactly as the job file gave them;
// numbers that are kept as text were integers in the file and are not converted here.
#pragma once

#include <string>
#include <vector>

// --- names fixed by the job files: a field bears the name of the key that fills it ---------------

/// The nineteen free label fields of a piece.
struct FIELD_T {
  std::string Field1, Field2, Field3, Field4, Field5, Field6, Field7, Field8, Field9, Field10;
  std::string Field11, Field12, Field13, Field14, Field15, Field16, Field17, Field18, Field19;
};

/// The cut of a piece while it is being read; a stored piece holds these three texts itself.
struct CUT_T {
  std::string Length;  ///< length of the piece, mm
  std::string sxB;     ///< angle of the left end, degrees
  std::string dxB;     ///< angle of the right end, degrees
};

/// One machining work on a piece.
struct WORK_T {
  std::string Name;        ///< the operation, for example a drilling or a milling programme
  double ProfiLav = 0.0;   ///< side of the profile that is worked on
  double PositionX = 0.0;  ///< along the piece, mm
  double PositionY = 0.0;  ///< across the profile, mm
  double PositionZ = 0.0;  ///< height on the profile, mm
};

/// One piece cut from a bar: what the job formats share.
struct PIECE_T {
  std::string PieceNumber;  ///< integer, counted within the bar
  std::string Num;          ///< integer
  std::string Over_status;  ///< integer
  std::string BarCode;      ///< identifies the piece on its label
  std::string order_code;
  std::string Customer;
  std::string Cc_code;
  std::string Buyer;
  std::string BuyAddress;
  std::string time_car;
  std::string CtrsX;
  std::string CtrsYp;
  std::string CtrsYm;
  std::string Mirror;
  std::string Extra_Pie;
  std::string Length;        ///< length of the piece, mm
  std::string sxB;           ///< angle of the left end, degrees
  std::string dxB;           ///< angle of the right end, degrees
  std::vector<WORK_T> work;  ///< in file order
  std::string mark;
  FIELD_T Fields;
};

/// A piece as it is stored in its bar.
struct PIECE_CHILD_SECOND_T : PIECE_T {
  std::string plan_code;
  std::string CarCode;
  std::string Production_demand;
  std::string cut_angle_convert;
  std::string machine;
  std::string allow_min_cut;
  std::string boshan_value;
  std::string shashan_value;
  std::string project_addr;
};

/// One raw bar: a length of profile stock to be cut.
struct BAR_T {
  std::string DXF_Name;   ///< drawing of the profile's cross section
  std::string BarNumber;  ///< integer; several bars may bear the same number
  std::string MaxY;       ///< integer, width of the profile, mm
  std::string MaxZ;       ///< integer, height of the profile, mm
  std::string length;     ///< integer, length of the bar, mm
  std::string BarName;
  std::string BarColor;
  std::string Sortingcode;
  std::string BarLeftLength;  ///< integer, what is left over of the bar, mm
  std::string BarType;        ///< integer
  std::string BarCad;
  std::vector<PIECE_CHILD_SECOND_T> piece;  ///< in file order
};

/// The job file's header and the root of the job.
struct DATA_T {
  bool success = false;
  std::string code;
  std::string message;
  std::string Version;  ///< several queries answer only for "1.0"
  std::string Generator;
  std::string Unit;
  std::string Name;
  std::vector<BAR_T> Bar;  ///< in file order
};
