// The rows that the job queries answer with, the same for jobs of either format.
#pragma once

#include <string>

// --- names fixed by the host ---------------------------------------------------------------------

/// One cut: a piece together with the bar that it is cut from. All texts are as stored in the job.
struct RETURNACUT_T {
  std::string BarNumber;
  std::string Length;     ///< of the bar
  std::string CutLength;  ///< of the piece
  std::string SxB;
  std::string DxB;
  std::string CutNumBer;  ///< how many pieces the bar holds, as decimal text
  std::string OrderCode;
  std::string BarName;
  std::string PieceNumber;  ///< only when all cuts are asked for, else empty
};

/// One distinct machining work, with the dimensions of the first piece that it occurs on.
struct tagHOHEINFO {
  std::string name;
  double length = 0.0;  ///< of the piece, mm
  double width = 0.0;   ///< MaxY of the bar, mm
  double height = 0.0;  ///< MaxZ of the bar, mm
};

/// One label: the thirteen slots that the printing scripts read. Six of them are never filled.
struct PRINT_T {
  std::string sProfileCode;     ///< the piece's mark
  std::string sProfileName;     ///< the bar's DXF_Name
  std::string sProfileLength;   ///< the bar's length
  std::string sNameProduct;     ///< the bar's BarName
  std::string sColor;           ///< the bar's BarColor
  std::string sIndoorColor;     ///< always empty
  std::string sOutdoorColor;    ///< always empty
  std::string sLengthProduct;   ///< the bar's BarLeftLength
  std::string sPosition;        ///< always empty
  std::string sWindow;          ///< always empty
  std::string sCutAngle;        ///< the piece's cut_angle_convert
  std::string sProcess;         ///< always empty
  std::string sMaterialHeight;  ///< always empty
};
