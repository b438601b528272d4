#!/usr/bin/env perl
# check-sources.pl [ROOT]
#
# Fails (exit 1) when the source tree breaks one of the rules the compiler cannot
# see:
#  1. Windows-only names (Windows SDK headers, wchar_t, L"" / L'' literals) are
#     used outside src/platform/win32/ and src/app/. The logic must build and be
#     tested natively, so it may not lean on them. tests/e2e/ holds Windows-only
#     drivers (bench/startup/ the start-up benchmark's programs), and tools/ is
#     held to rules 3 and 4 alone.
#  2. A layer includes a header of a layer that is not below it: one above it, or a
#     sibling. The layers and their dependencies are read from the qv_layer(...)
#     lines of the top CMakeLists.txt, so a header-only include is caught before it
#     links by accident. Those lines must be true in turn: a dependency that no
#     include of the folder needs fails, and so does one between two screen folders
#     (@screens below), which are siblings that only the program folder joins.
#     The process state (frame/AppState.h) alone holds upper layers' state; what
#     it holds is checked not to reach further up.
#  3. An error handler that does nothing: an `ErrorInfo&) {}` handler or a catch
#     block with an empty body. Where a failure is passed over on purpose the code
#     says so with base::IgnoreFailure (or a handler that writes the routine's trace
#     line, frame::TraceFailure), so that silence by design and an oversight look
#     different. This rule covers tools/ as well.
#  4. A handle or interface given back by hand: CloseHandle, DeleteObject,
#     DestroyIcon, SysFreeString, WinHttpCloseHandle, RegCloseKey or ->Release()
#     outside the holders of src/platform/win32/Win32Handles.h, in src/, tests/,
#     tools/ and bench/ (the end-to-end drivers, tools and benchmarks include the
#     holders too). The interfaces' own CloseHandle (a handle its caller owns,
#     closed on request) are the two calls allowed by name below; the bare COM pair
#     of tools/wine/com-echo, which holds nothing of the project, is left out.
# Comments and the contents of string literals are ignored.
use strict;
use warnings;
use File::Find;

my $root = shift // '.';
$root =~ s{/+$}{};

my @winHeaders = qw(
  windows winbase windef winuser wingdi winnt winreg winsvc winerror winver
  shellapi shlobj shlwapi shobjidl commctrl commdlg objbase ole2 oleauto olectl
  unknwn objidl oaidl ocidl wtypes comdef comutil atlbase tchar psapi tlhelp32
  mmsystem ras raserror htmlhelp wininet winhttp winsock2 ws2tcpip iphlpapi
  dbghelp process direct io conio
);
my $winHeaderRe = join '|', map { quotemeta } @winHeaders;

# --- layers -----------------------------------------------------------------
my %deps;
my %layerLine;  # layer -> line of its qv_layer(...) in CMakeLists.txt
{
  open my $fh, '<', "$root/CMakeLists.txt" or die "check-sources: no $root/CMakeLists.txt\n";
  local $/;
  my $text = <$fh>;
  $text =~ s/#[^\n]*//g;
  while ($text =~ /\bqv_layer\(\s*(\w+)((?:\s+[^\s)]+)*)\s*\)/g) {
    my ($name, $rest) = ($1, $2);
    my @words = split ' ', $rest;
    my @d;
    my $inDeps = 0;
    for my $w (@words) {
      if ($w eq 'DEPS') { $inDeps = 1; next; }
      push @d, $w =~ s/^qv_//r if $inDeps;
    }
    $deps{$name} = \@d;
    $layerLine{$name} = 1 + (substr($text, 0, $-[0]) =~ tr/\n//);
  }
}

# The screen folders: each stands on the kit, the job store and the engine, and none
# depends on another; the one folder above them all wires them together.
my @screens = qw(account jobs sessions notify monitor);
my $screensTop = 'program';

# The process state is the one place a lower layer holds upper layers' values
# (their module state and plain records). What it holds may bring in nothing the
# holder could not include itself, other than more headers of the same layer; that
# is checked below for every header reached this way.
my %stateHolders = map { $_ => 1 } qw(
  frame/AppState.h
);

my %below;   # layer -> set of layers it may include (itself and all below)
sub closure {
  my ($layer, $seen) = @_;
  return if $seen->{$layer}++;
  closure($_, $seen) for @{ $deps{$layer} // [] };
}
for my $layer (keys %deps) {
  my %seen;
  closure($layer, \%seen);
  $below{$layer} = \%seen;
}

# --- files ------------------------------------------------------------------
my @files;
my %toolsOnly;  # files of tools/: checked for empty handlers and releases alone
for my $dir (qw(src tests bench tools)) {
  next unless -d "$root/$dir";
  find({ no_chdir => 1, wanted => sub {
    return unless -f && /\.(?:h|hh|hpp|hxx|c|cc|cpp|cxx|inl|ipp)$/;
    push @files, $File::Find::name;
    $toolsOnly{$File::Find::name} = 1 if $dir eq 'tools';
  } }, "$root/$dir");
}
@files = sort @files;

# An empty handler: a lambda or function taking the ErrorInfo with nothing in its body,
# or a catch block with nothing in it (comments do not count: they are removed first).
my $emptyHandler = qr{ErrorInfo\s*&\s*\w*\s*\)\s*(?:mutable\s*)?(?:noexcept\s*)?\{\s*\}};
my $emptyCatch = qr{\bcatch\s*\([^()]*\)\s*\{\s*\}};

# A release written by hand: the Windows call (bare or with a leading ::), or a COM
# Release through a pointer. A method of that name (list.CloseHandle, a declaration
# bool CloseHandle(...), Class::CloseHandle) is not one.
my $releaseNames = qr{CloseHandle|DeleteObject|DestroyIcon|SysFreeString|WinHttpCloseHandle|RegCloseKey};
sub rawRelease {
  my ($line) = @_;
  return 'Release' if $line =~ /->\s*Release\s*\(\s*\)/;
  while ($line =~ /(?:(?<![\w.>:])::|(?<![\w.>:]))($releaseNames)\s*\(/g) {
    my ($name, $before) = ($1, substr($line, 0, $-[0]));
    next if $before =~ /\b(\w+)[\s&*]*$/ && $1 !~ /^(?:return|else|do)$/;
    return $name;
  }
  return undef;
}
# The bare COM pair of tools/wine/com-echo measures what Wine keeps of a call by
# itself: it is built by its own script, outside the project, with none of the
# project's headers in it, so that nothing of ours is in what it measures.
my $releaseFree = qr{^tools/wine/com-echo/};

my %releaseAllowed = (
  'src/platform/win32/Win32Handles.h' => qr{.},
  'src/platform/win32/Win32MutexService.cpp' => qr{return ::CloseHandle\(},
  'src/platform/win32/Win32ProcessList.cpp' => qr{return ::CloseHandle\(},
);

my $problems = 0;
sub problem {
  my ($file, $line, $msg) = @_;
  print "$file:$line: $msg\n";
  $problems++;
}

my $literal = qr{
    (?<com> //[^\n]* | /\*.*?\*/ )
  | (?<pre> \b(?:u8|u|U|L)?R ) " (?<delim> [^()\\\s"]{0,16} ) \( .*? \) \k<delim> "
  | (?<spre> \b(?:u8|u|U|L) )? " (?: \\. | [^"\\\n] )* "
  | (?<cpre> \b(?:u8|u|U|L) )? (?<! [0-9a-fA-F] ) ' (?: \\. | [^'\\\n] )+ '
}xs;

my %includes;   # "layer/File.h" -> [line, include] of includes of a layer's headers
my %used;       # layer -> set of other layers that its own files include
my @held;       # [header, holder's layer, where] reached from a state holder

for my $path (@files) {
  my $rel = substr($path, length($root) + 1);
  open my $fh, '<', $path or next;
  local $/;
  my $text = <$fh>;
  close $fh;

  # Two views with line numbers kept: comments removed (for #include paths), and
  # comments and literal contents removed (for names and literal prefixes).
  my ($noComments, $bare) = ('', '');
  my $pos = 0;
  while ($text =~ /$literal/g) {
    my ($start, $end) = ($-[0], $+[0]);
    my $between = substr($text, $pos, $start - $pos);
    my $match = substr($text, $start, $end - $start);
    my $newlines = "\n" x ($match =~ tr/\n//);
    $noComments .= $between;
    $bare .= $between;
    if (defined $+{com}) {
      $noComments .= " $newlines";
      $bare .= " $newlines";
    } else {
      my $prefix = $+{pre} // $+{spre} // $+{cpre} // '';
      my $quote = defined $+{cpre} ? "''" : '""';
      $noComments .= $match;
      $bare .= "$prefix$quote$newlines";
    }
    $pos = $end;
  }
  $noComments .= substr($text, $pos);
  $bare .= substr($text, $pos);

  while ($bare =~ /($emptyHandler|$emptyCatch)/g) {
    my $at = 1 + (substr($bare, 0, $-[0]) =~ tr/\n//);
    my $what = $1 =~ /^catch/ ? 'empty catch block' : 'empty ErrorInfo handler';
    problem($rel, $at, "$what: pass a failure over with base::IgnoreFailure or trace it");
  }
  my $windowsAllowed = $toolsOnly{$path} || $rel =~ m{^src/(?:platform/win32|app)/}
                    || $rel =~ m{^(?:tests/e2e|bench/startup)/};
  my ($layer) = $rel =~ m{^src/(\w+)/};
  my $layerChecked = defined $layer && exists $deps{$layer} && $rel !~ m{^src/platform/win32/};
  my $srcRel = $rel =~ s{^src/}{}r;

  my @withComments = split /\n/, $noComments, -1;
  my @bareLines = split /\n/, $bare, -1;
  for my $i (0 .. $#withComments) {
    my $n = $i + 1;
    my $line = $withComments[$i];
    if ($line =~ /^\s*#\s*include\s*[<"]([^>"]+)[>"]/) {
      my $inc = $1;
      if (!$windowsAllowed && $inc =~ m{^(?:$winHeaderRe)\.h$}i) {
        problem($rel, $n, "Windows header <$inc> outside src/platform/win32, src/app and tests/e2e");
      }
      if ($layerChecked && $inc =~ m{^(\w+)/} && exists $deps{$1} && !$below{$layer}{$1}) {
        if ($stateHolders{$srcRel}) {
          push @held, [$inc, $layer, "$rel:$n"];
        } else {
          problem($rel, $n, "layer '$layer' includes \"$inc\" from layer '$1', which is not "
                  . "below it");
        }
      }
      push @{ $includes{$srcRel} }, [$n, $inc] if $inc =~ m{^(\w+)/} && exists $deps{$1};
      $used{$layer}{$1} = 1 if $layerChecked && $inc =~ m{^(\w+)/} && exists $deps{$1};
    }
    my $b = $bareLines[$i] // '';
    my $what = $rel =~ m{^(?:src|tests|tools|bench)/} && $rel !~ $releaseFree ? rawRelease($b) : undef;
    if (defined $what) {
      my $allowed = $releaseAllowed{$rel};
      problem($rel, $n, "$what by hand: hold it in a holder of src/platform/win32/Win32Handles.h")
        unless defined $allowed && $b =~ $allowed;
    }
    next if $windowsAllowed;
    problem($rel, $n, "wchar_t outside src/platform/win32 and src/app") if $b =~ /\bwchar_t\b/;
    problem($rel, $n, "wide literal (L\"\" or L'') outside src/platform/win32 and src/app")
      if $b =~ /\bLR?["']/;
  }
}

# The declared graph: every dependency used by an include, none between screens.
my %isScreen = map { $_ => 1 } @screens;
for my $layer (sort keys %deps) {
  for my $dep (@{ $deps{$layer} }) {
    problem('CMakeLists.txt', $layerLine{$layer}, "qv_layer($layer) depends on qv_$dep, which no include of "
            . "src/$layer/ needs") unless $used{$layer}{$dep};
    problem('CMakeLists.txt', $layerLine{$layer}, "qv_layer($layer) depends on the screen folder qv_$dep: "
            . "screens are siblings, and only '$screensTop' joins them")
      if $isScreen{$dep} && $layer ne $screensTop;
  }
}

# Walk what the process state holds.
my %visited;
while (my $item = shift @held) {
  my ($header, $holderLayer, $where) = @$item;
  next if $visited{$header}++;
  my ($ownLayer) = $header =~ m{^(\w+)/};
  for my $entry (@{ $includes{$header} // [] }) {
    my ($n, $inc) = @$entry;
    my ($incLayer) = $inc =~ m{^(\w+)/};
    if ($incLayer eq $ownLayer) {
      push @held, [$inc, $holderLayer, $where];
    } elsif (!$below{$holderLayer}{$incLayer}) {
      problem("src/$header", $n, "includes \"$inc\"; it is held by the process state "
              . "($where), so it may include only $holderLayer and below and its own layer");
    }
  }
}

printf "check-sources: %d files, %d layers, %d problem%s\n",
  scalar @files, scalar keys %deps, $problems, $problems == 1 ? '' : 's';
exit($problems ? 1 : 0);
