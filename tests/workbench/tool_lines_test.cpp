// Every line of every tool, pressed and typed as a person would, with fields that differ from their
// defaults and from each other. What it prints, draws, names and writes must be what the procedures
// that it stands for do with just these values; what it cannot do is said, and nothing else
// changes.

#include "workbench/tool_lines.hpp"

#include "app/plot/plot_panes.hpp"
#include "app/signal/au_file.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/report.hpp"
#include "app/signal/sound_import.hpp"
#include "app/signal/spectrum.hpp"
#include "draw/lines.hpp"
#include "eps/eps_stream.hpp"

namespace torve {
namespace {

void clear_band(int pane) {
  clearwin(0, pane * 176, 800, pane * 176 + 170, 15);
}

void draw(int pane, const std::string& name, int start, int step, double xsc, double ysc) {
  set_pane_name(pane, name);
  clear_band(pane);
  plot_anew(name.c_str(), pane * 176, start, step, xsc, ysc, target_screen);
}

void draw_spectrum(int pane, const std::string& name, const char* samples) {
  set_pane_name(pane, name);
  clear_band(pane);
  plot_spectrum_anew(name.c_str(), pane * 176, 0, 1, 0.4, 1, target_screen, samples);
}

void make_spectrum(int pane, const char* of, const char* samples) {
  const std::string name = "spectr" + std::to_string(pane + 1) + ".spe";
  static_cast<void>(power_spectrum(of, name, samples));
  draw_spectrum(pane, name, samples);
}

void filter(const char* band, const char* rest, int low, int high, FilterMode sort) {
  if (sort == filter_band_pass) std::printf("going to filter_spectrum low=%d high=%d\n", low, high);
  static_cast<void>(filter_spectrum(band, rest, low, high, sort));
}

void print(int pane, const char* file) {
  FilePtr end = open_eps(file, "psexampl.dat");
  plot_anew(pane_name(pane), pane * 176, 0, 1, 0.02, 1, target_eps);
  close_eps(std::move(end));
}

void convert(const char* signal, const char* au) {
  make_au_file(signal, au);
  std::printf("done\n");
}

void cut(const char* au, const char* signal) {
  std::printf("at write_au_menu_actions\nu1[0].name=%s\nu1[1].name=%s\n", signal, au);
  std::printf("u1[2].name=0\nu1[3].name=1\n");
  cut_part(au, signal, 0, 1);
  std::printf("done\n");
}

// Nothing, or a directory, where a pane's file has been; or a directory "d".
template <int pane>
void remove() {
  std::filesystem::remove(signal_of(pane));
}
template <int pane>
void block() {
  if (pane != 0) remove<pane>();
  std::filesystem::create_directory(pane == 0 ? "d" : signal_of(pane));
}

struct Found {
  int offset = 0;
  float scale = 1;
};

Found match(const char* a, const char* b, const char* out, int start, const char* samples,
            Found found = {}) {
  float mean = 0;
  if (my_correlation(a, b, out, &mean, &found.offset, &found.scale, 1, start, samples) != 0)
    std::printf("sample too small\n");
  return found;
}

void refuse(const char* output, const char* samples) {
  set_pane_name(2, output);
  match("p1.res", "p2.res", output, 0, samples);
}

void compare(const char* output, int pane) {
  match("p1.res", "p2.res", output, 0, "all");
  draw(pane, output, 0, 1, 0.02, 1);
}

// t.res and a sound of p1.res, the signal so many seconds newer.
Exported exported;
Imported imported;
void make_sound(const char* name, int newer) {
  EXPECT_TRUE(export_sound("p1.res", name, &exported).is_done());
  write_file("t.res", "0 5\n1 6\n2 -7\n");
  std::filesystem::last_write_time(
      "t.res", std::filesystem::last_write_time(name) + std::chrono::seconds(newer));
}

const Case cases[] = {
    {"Plot1", plots, 0, "42=0.5 33=2 23=3 12=5", [] { draw(0, "p1.res", 5, 3, 2, 0.5); }},
    {"Plot2", plots, 1, "42=0.7 33=3 23=2 12=-40", [] { draw(1, "p2.res", -40, 2, 3, 0.7F); }},
    {"Plot3", plots, 2, "42=2 33=0.1 23=5 12=11", [] { draw(2, "p3.res", 11, 5, 0.1F, 2); }},
    {"no numbers", plots, 1, "42=x 33=x 23=x 12=x", [] { draw(1, "p2.res", 0, 1, 1, 1); }},
    {"Find a match", plots, 3, "44=out.res 27=3 2:12=10500 0:33=0.5 0:23=4",
     [] {
       const auto [offset, scale] = match("p1.res", "p2.res", "out.res", 3, "10500");
       draw(0, "p1.res", offset, 4, 0.5, static_cast<double>(scale));
       draw(1, "p2.res", 0, 4, 0.5, 1);
       draw(2, "out.res", 0, 4, 0.5, 1);
     },
     "0:12=0 0:42=0.98 1:12=710 1:23=4_ 1:33=0.5 1:42=1.0 2:12=710"},
    {"Save Plot1", printer, 0, "24=a.eps", [] { print(0, "a.eps"); }},
    {"Save Plot2", printer, 1, "24=b.eps", [] { print(1, "plot1.eps"); }},
    {"Save Plot3", printer, 2, "0:24=c.eps", [] { print(2, "c.eps"); }},
    {"Get a signal", reader, 0, "54=3 33=b.res 18=p2.res", [] { draw(2, "p2.res", 0, 1, 0.02, 1); },
     "33=p2.res"},
    {"Get a spectrum", reader, 0, "54=2 18=p1.spe", [] { draw_spectrum(1, "p1.spe", "20000"); }},
    {"Get a sound", reader, 0, "54=3 18=t.WAV",
     [] {
       std::printf("t.WAV: 44100 Hz, 1 channel, 11000 samples, 0.249 s\n");
       std::printf("t.res: channel 1 at 44100 Hz, 11000 samples, 0.249 s\n");
       std::filesystem::rename("t.res", "t.res.bak");
       EXPECT_TRUE(import_sound("t.WAV", "t.res", {}, &imported).is_done());
       draw(2, "t.res", 0, 1, 0.02, 1);
     },
     "33=t.WAV", "", "t.res: channel 1 of 1; kept as t.res.bak", [] { make_sound("t.WAV", -1); }},
    {"Get a sound again", reader, 0, "54=2 18=t.flac", [] { draw(1, "t.res", 0, 1, 0.02, 1); },
     "33=t.flac", "", "t.res is newer than t.flac: shown as it is",
     [] { make_sound("t.flac", 1); }},
    {"Get no sound", reader, 0, "18=t.caf", [] {}, "33=mid.res", "Not a signal t.caf",
     "t.caf: cannot be read as sound (Format not recognised)", [] { write_file("t.caf", "x"); }},
    {"Analyze a sound", reader, 1, "16=t.wav",
     [] {
       std::printf("not au-file\nformat=WAV (Microsoft)\nencoding=Signed 24 bit PCM\n");
       std::printf("sampling rate=44100\nchannels=1\nsamples a channel=11000\nseconds=0.249433\n");
     },
     "", "", "t.wav: 44100 Hz, 1 channel, 11000 samples, 0.249 s", [] { make_sound("t.wav", 1); }},
    {"Convert to a sound", writer, 0, "2:24=new.aif 2:4=p3.res",
     [] {
       EXPECT_TRUE(export_sound("p3.res", "new.aif", &exported).is_done());
       std::printf(
           "new.aif: 11000 samples, 0.249 s; all values times 1.56216e-05, "
           "the largest was 64014\ndone\n");
     },
     "", "",
     "new.aif: 11000 samples, 0.249 s; all values times 1.56216e-05, the largest was 64014"},
    {"Convert to no sound", writer, 0, "2:24=d.wav 2:4=p3.res", [] { std::printf("done\n"); }, "",
     "Cannot write file d.wav", "d.wav: cannot be written (Is a directory)",
     [] { std::filesystem::create_directory("d.wav"); }},
    {"Get into no pane", reader, 0, "54=4 18=p1.spe", [] {}, "", "",
     "Plot has to be 1, 2 or 3, not \"4\"."},
    {"Analyze", reader, 1, "16=p3.res", [] { analyse("p3.res"); }, "", "Not a signal p3.res",
     "p3.res: not an AU file"},
    {"Make a gif", reader, 2, "41=2 16=b.gif", [] { writeGIF1("b.gif", 0, 176, 799, 346); }},
    {"Convert", writer, 0, "2:24=new.au 2:4=p3.res", [] { convert("p3.res", "new.au"); }},
    {"Cut", writer, 1, "2:24=t.au 2:4=cut.res 40=.006 25=.002",
     [] {
       std::printf("at write_au_menu_actions\nu1[0].name=cut.res\nu1[1].name=t.au\n");
       std::printf("u1[2].name=.002\nu1[3].name=.006\n");
       cut_part("t.au", "cut.res", .002F, .006F);
       std::printf("done\n");
     }},
    {"the names", writer, 2, "4=p3.res", [] {}},
    {"Autocorrelation", correlations, 0, "41=2 19=p3.res",
     [] { autocorrelation("p3.res", "2"), draw(1, "autocor2.res", 0, 1, 1, 1); }},
    {"Correlation", correlations, 1, "47=1 29=p1.res 15=p3.res",
     [] { correlation("p3.res", "p1.res", "1"), draw(0, "corre1.res", 0, 1, 1, 1); }, "", "",
     "peak at lag 1, 0.023 ms, 0.084 | torve-batch correlation p3.res p1.res 1"},
    {"Comparison", correlations, 2, "57=10500 47=1 29=p3.res 15=p2.res",
     [] {
       const Found found = match("p2.res", "p3.res", "compar1.res", 0, "10500");
       draw(0, "compar1.res", found.offset, 1, 0.02, 1);
     }},
    {"Comparison, refused", correlations, 2, "57=2 47=2",
     [] {
       match("p1.res", "p2.res", "compar2.res", 0, "2");
       draw(1, "compar2.res", 0, 1, 0.02, 1);
     },
     "", "Too few samples p1.res", "p1.res: too few samples"},
    {"Out-of-band", spectra, 0, "2:45=999 2:31=99 2:12=b.res 45=4000 31=3000 15=o.res",
     [] { filter("b.res", "o.res", 3000, 4000, filter_out_of_band); }},
    {"Powerspectrum", spectra, 1, "47=10200 37=1 17=p2.res",
     [] { make_spectrum(0, "p2.res", "10200"); }},
    {"Bandpass", spectra, 2, "45=4000 31=3000 12=b.res 0:45=999 0:31=99 0:15=o.res",
     [] { filter("b.res", "o.res", 3000, 4000, filter_band_pass); }},
    {"Bandpass, no numbers", spectra, 2, "45=x 31=-",
     [] { filter("mid.res", "rest.res", 0, 0, filter_band_pass); }},
    // As they open.
    {"autocorrelation", correlations, 0, "",
     [] { autocorrelation("p1.res", "1"), draw(0, "autocor1.res", 0, 1, 1, 1); }},
    {"correlation", correlations, 1, "",
     [] { correlation("p1.res", "p2.res", "3"), draw(2, "corre3.res", 0, 1, 1, 1); }, "", "",
     "peak at lag 4458, 101.088 ms, 0.386 | torve-batch correlation p1.res p2.res 3"},
    {"comparison", correlations, 2, "",
     [] {
       const auto [offset, scale] =
           match("p1.res", "p2.res", "compar3.res", 1544, "all", {0, 0.7F});
       draw(1, "p2.res", offset, 1, 0.02, static_cast<double>(scale));
       draw(2, "compar3.res", offset, 1, 0.02, 1);
     }},
    {"spectrum", spectra, 1, "", [] { make_spectrum(2, "p3.res", "all"); }},
    {"band", spectra, 2, "", [] { filter("mid.res", "rest.res", 2200, 5000, filter_band_pass); }},
    {"plot", plots, 1, "", [] { draw(1, "p2.res", 0, 44, 1, 1); }},
    {"eps", printer, 1, "", [] { print(1, "plot1.eps"); }},
    {"au", writer, 0, "", [] { convert("checknew.res", "checkts.au"); }, "",
     "Cannot find file checknew.res", "checknew.res: there is no such file"},
    // With each way to fail.
    {"Plot1, missing", plots, 0, "", [] { draw(0, "p1.res", 0, 44, 1, 1); }, "",
     "Cannot find file p1.res", "p1.res: there is no such file", remove<1>},
    {"Plot1, no file", plots, 0, "", [] { draw(0, "p1.res", 0, 44, 1, 1); }, "",
     "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"Plot1, too short", plots, 0, "12=20000", [] { draw(0, "p1.res", 20000, 44, 1, 1); }, "",
     "Too few samples p1.res", "p1.res: has fewer lines than are to be skipped"},
    {"Plot1, empty", plots, 0, "", [] { draw(0, "p1.res", 0, 44, 1, 1); }, "",
     "Not a signal p1.res", "p1.res: there is nothing to draw", [] { write_file("p1.res", ""); }},
    {"match, missing", plots, 3, "", [] { refuse("compres.res", "0"); }, "",
     "Cannot find file p2.res", "p2.res: there is no such file", remove<2>},
    {"match, too few", plots, 3, "", [] { refuse("compres.res", "0"); }, "",
     "Too few samples p1.res", "p1.res: too few samples; kept as compres.res.bak",
     [] { write_file("compres.res", "1 2\n"); }},
    {"match, negative", plots, 3, "27=-5",
     [] {
       match("p1.res", "p2.res", "compres.res", -5, "0");
       for (const int pane : {0, 1, 2})
         draw(pane, pane == 2 ? "compres.res" : pane_name(pane), 0, 44, 1, 1);
     },
     "", "Unknown parameter: press a key a negative start", "the start must not be negative"},
    {"match, unwritable", plots, 3, "44=d 2:12=all", [] { refuse("d", "all"); }, "",
     "Cannot write file d", "d: cannot be written (Is a directory)", block<0>},
    {"eps, unwritable", printer, 0, "24=d", [] {}, "", "", "d: cannot be written", block<0>},
    {"eps, missing", printer, 2, "", [] { print(2, "plot1.eps"); }, "", "Cannot find file p3.res",
     "p3.res: there is no such file", remove<3>},
    {"Get, missing", reader, 0, "18=a-very-long-name.res",
     [] { draw(0, "a-very-long-name.res", 0, 1, 0.02, 1); }, "",
     "Cannot find file ery-long-name.res", "a-very-long-name.res: there is no such file"},
    {"Get, no spectrum", reader, 0, "18=no.spe", [] { draw_spectrum(0, "no.spe", "20000"); }, "",
     "Cannot find file no.spe", "no.spe: there is no such file"},
    {"Get, emptied", reader, 0, "18=t.au",
     [] {
       set_pane_name(0, "t.au");
       clear_band(0);
       cut_part("t.au", "t.au", 0, 100);
     },
     "", "Not a signal t.au", "t.au: not an AU file; kept as t.au.bak"},
    {"Get, no ending", reader, 0, "18=p1",
     [] {
       set_pane_name(0, "p1");
       clear_band(0);
     },
     "", "Not a signal p1", "p1: the name ends in none of the known ways"},
    {"Analyze, missing", reader, 1, "16=no.au", [] { analyse("no.au"); }, "",
     "Cannot find file no.au", "no.au: there is no such file"},
    {"gif, unwritable", reader, 2, "16=d", [] {}, "", "Cannot write file d",
     "d: cannot be written (Is a directory)", block<0>},
    {"gif of no pane", reader, 2, "41=0", [] {}, "", "", "Plot has to be 1, 2 or 3, not \"0\"."},
    {"Convert, missing", writer, 0, "2:24=t.au 2:4=no.res", [] { convert("no.res", "t.au"); }, "",
     "Cannot find file no.res", "no.res: there is no such file; kept as t.au.bak"},
    {"Convert, unwritable", writer, 0, "2:24=d 2:4=p1.res", [] { convert("p1.res", "d"); }, "",
     "Cannot write file d", "d: cannot be written (Is a directory)", block<0>},
    {"Cut, missing", writer, 1, "2:24=no.au 2:4=cut.res 40=1 25=0", [] { cut("no.au", "cut.res"); },
     "", "Cannot find file no.au", "no.au: there is no such file"},
    {"Cut, no AU file", writer, 1, "2:24=p1.res 2:4=p2.res 40=1 25=0",
     [] { cut("p1.res", "p2.res"); }, "", "Not a signal p1.res",
     "p1.res: not an AU file; kept as p2.res.bak"},
    {"Cut, big-endian", writer, 1, "2:24=b.au 2:4=d 40=1 25=0", [] { cut("b.au", "d"); }, "",
     "Cannot write file d", "b.au is a big-endian AU file: torve-batch import takes such files",
     [] {
       write_file("b.au", ".snd");
       block<0>();
     }},
    {"Cut, unwritable", writer, 1, "2:24=t.au 2:4=d 40=1 25=0", [] { cut("t.au", "d"); }, "",
     "Cannot write file d", "d: cannot be written (Is a directory)", block<0>},
    {"Autocorrelation, missing", correlations, 0, "19=no.res",
     [] { autocorrelation("no.res", "1"); }, "", "Cannot find file no.res",
     "no.res: there is no such file"},
    {"Autocorrelation, unwritable", correlations, 0, "", [] { autocorrelation("p1.res", "1"); }, "",
     "Cannot write file autocor1.res", "autocor1.res: cannot be written (Is a directory)",
     [] { std::filesystem::create_directory("autocor1.res"); }},
    {"Correlation, missing", correlations, 1, "29=no.res",
     [] { correlation("p1.res", "no.res", "3"); }, "", "Cannot find file no.res",
     "no.res: there is no such file"},
    {"Correlation into no pane", correlations, 1, "47=x", [] {}, "", "",
     "Plot has to be 1, 2 or 3, not \"x\"."},
    {"Spectrum, missing", spectra, 1, "17=no.res",
     [] { static_cast<void>(power_spectrum("no.res", "spectr3.spe", "all")); }, "",
     "Cannot find file no.res", "no.res: there is no such file",
     [] { write_file("spectr3.spe", "size=3\n0 1\n"); }},
    {"Spectrum, too short", spectra, 1, "47=99", [] { make_spectrum(2, "p3.res", "99"); }, "",
     "Too few samples p3.res", "p3.res: too few samples"},
    {"Spectrum, unwritable", spectra, 1, "",
     [] { static_cast<void>(power_spectrum("p3.res", "spectr3.spe", "all")); }, "",
     "Cannot write file spectr3.spe", "spectr3.spe: cannot be written (Is a directory)",
     [] { std::filesystem::create_directory("spectr3.spe"); }},
    {"Bandpass, no spectrum", spectra, 2, "",
     [] { filter("mid.res", "rest.res", 2200, 5000, filter_band_pass); }, "",
     "Spectrum wanted first", "a spectrum has to be computed first",
     [] { store_spectrum_size(0); }},
    {"Plot2, missing", plots, 1, "", [] { draw(1, "p2.res", 0, 44, 1, 1); }, "",
     "Cannot find file p2.res", "p2.res: there is no such file", remove<2>},
    {"Plot3, no file", plots, 2, "", [] { draw(2, "p3.res", 0, 44, 1, 1); }, "",
     "Cannot find file p3.res", "p3.res: cannot be read", block<3>},
    {"match, no file", plots, 3, "", [] { refuse("compres.res", "0"); }, "",
     "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"eps, no file", printer, 1, "", [] { print(1, "plot1.eps"); }, "", "Cannot find file p2.res",
     "p2.res: cannot be read", block<2>},
    {"Get, no file", reader, 0, "54=2 18=p1.res", [] { draw(1, "p1.res", 0, 1, 0.02, 1); }, "",
     "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"Analyze, no file", reader, 1, "16=p1.res", [] { analyse("p1.res"); }, "",
     "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"Convert, no file", writer, 0, "2:24=new.au 2:4=p1.res", [] { convert("p1.res", "new.au"); },
     "", "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"Cut, no file", writer, 1, "2:24=p1.res 2:4=c.res 40=1 25=0", [] { cut("p1.res", "c.res"); },
     "", "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"Autocorrelation, no file", correlations, 0, "", [] { autocorrelation("p1.res", "1"); }, "",
     "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"Autocorrelation into no pane", correlations, 0, "41=9", [] {}, "", "",
     "Plot has to be 1, 2 or 3, not \"9\"."},
    {"Correlation, no file", correlations, 1, "", [] { correlation("p1.res", "p2.res", "3"); }, "",
     "Cannot find file p2.res", "p2.res: cannot be read", block<2>},
    {"Correlation, unwritable", correlations, 1, "", [] { correlation("p1.res", "p2.res", "3"); },
     "", "Cannot write file corre3.res", "corre3.res: cannot be written (Is a directory)",
     [] { std::filesystem::create_directory("corre3.res"); }},
    {"Comparison, missing", correlations, 2, "47=1", [] { compare("compar1.res", 0); }, "",
     "Cannot find file p2.res", "p2.res: there is no such file", remove<2>},
    {"Comparison, missing beside an old one", correlations, 2, "47=1",
     [] {
       match("p1.res", "p2.res", "compar1.res", 0, "all");
       set_pane_name(0, "compar1.res");
     },
     "", "Cannot find file p2.res", "p2.res: there is no such file",
     [] { remove<2>(), write_file("compar1.res", "0 1\n1 2\n"); }},
    {"Comparison, no file", correlations, 2, "47=1", [] { compare("compar1.res", 0); }, "",
     "Cannot find file p1.res", "p1.res: cannot be read", block<1>},
    {"Comparison, unwritable", correlations, 2, "47=1", [] { compare("compar1.res", 0); }, "",
     "Cannot write file compar1.res", "compar1.res: cannot be written (Is a directory)",
     [] { std::filesystem::create_directory("compar1.res"); }},
    {"Comparison into no pane", correlations, 2, "47=12", [] {}, "", "",
     "Plot has to be 1, 2 or 3, not \"12\"."},
    {"Spectrum, no file", spectra, 1, "",
     [] { static_cast<void>(power_spectrum("p3.res", "spectr3.spe", "all")); }, "",
     "Cannot find file p3.res", "p3.res: cannot be read", block<3>},
    {"Spectrum into no pane", spectra, 1, "37=0", [] {}, "", "",
     "Plot has to be 1, 2 or 3, not \"0\"."},
    {"Bandpass, unwritable", spectra, 2, "12=d",
     [] { filter("d", "rest.res", 2200, 5000, filter_band_pass); }, "", "Cannot write file d",
     "d: cannot be written (Is a directory)", block<0>},
    {"Out-of-band, no spectrum", spectra, 0, "",
     [] { filter("mid.res", "rest.res", 2200, 5000, filter_out_of_band); }, "",
     "Spectrum wanted first", "a spectrum has to be computed first",
     [] { store_spectrum_size(0); }},
    {"match, cancelled", plots, 3, "2:12=all",
     [] { std::printf("in my_correlation, start_offset=0\n"); }, "", "",
     "Cancelled: compres.res is as it was", cancel_computations},
    {"Comparison, cancelled", correlations, 2, "",
     [] { std::printf("in my_correlation, start_offset=1544\n"); }, "", "",
     "Cancelled: compar3.res is as it was", cancel_computations},
    {"Convert, cancelled", writer, 0, "2:4=p1.res", [] { std::printf("make_au_file\n"); }, "", "",
     "Cancelled: checkts.au is as it was", cancel_computations},
    {"Out-of-band, unwritable", spectra, 0, "15=d",
     [] { filter("mid.res", "d", 2200, 5000, filter_out_of_band); }, "", "Cannot write file d",
     "d: cannot be written (Is a directory)", block<0>},
};

TEST_F(ToolLines, DoWhatTheirFieldsSay) {
  for (const Case& test : cases) {
    const Result wanted = outcome(test, test.means);
    const Result found = outcome(test, [&] { use(test); });
    EXPECT_EQ(found.said, wanted.said) << test.what;
    EXPECT_EQ(found.panes, wanted.panes) << test.what;
    EXPECT_TRUE(found.canvas == wanted.canvas) << test.what << ": the canvas";
    for (const auto& [name, bytes] : wanted.files)
      EXPECT_TRUE(found.files.contains(name) && found.files.at(name) == bytes)
          << test.what << ": " << name;
    EXPECT_EQ(found.files.size(), wanted.files.size()) << test.what;
    EXPECT_EQ(found.message, test.message) << test.what;
    if (has_equal_command(test)) {
      expect_equal_command(test, TORVE_BIN, found.strip, found);
    } else {
      EXPECT_EQ(found.strip, test.strip) << test.what;
    }
    free_one_wd_object(test.tool.id);
  }
}

}  // namespace
}  // namespace torve
