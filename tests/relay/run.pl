# One run of a client, as a program under Wine asks for it. A text is bytes behind their number (four
# bytes), a list is texts behind theirs. Asked: a text with the key, then lists: the client and its
# arguments, the working folder alone, the environment's entries. Answered: any number of frames of
# a letter and a text, "o" with bytes of standard output, "e" of standard error; at last "x" with
# the exit code in decimal. Meanwhile the caller sends its standard input as texts, the last one empty.
use strict;
use warnings;
use Cwd qw(realpath);
use IO::Select;
use POSIX ();

my %clients = map { $_ => 1 } qw(git hg chg svn svnadmin svnlook svnmucc);
my $block_size = 65536;

# The end of it that tells when the run is over.
my $life;

# Wine may keep the connection of a caller that was ended before it had said all.
sub receive_bytes {
    my ($connection, $size) = @_;
    my $sources = IO::Select->new($connection, $life);
    my $bytes = '';
    while (length $bytes < $size) {
        die "the run is over\n" if grep { $_ == $life } $sources->can_read;
        my $count = sysread $connection, $bytes, $size - length $bytes, length $bytes;
        die "the caller hung up\n" unless $count;
    }
    return $bytes;
}

sub receive_number {
    return unpack 'N', receive_bytes($_[0], 4);
}

sub receive_list {
    my ($connection) = @_;
    return map { receive_bytes($connection, receive_number($connection)) }
        1 .. receive_number($connection);
}

sub send_frame {
    my ($connection, $kind, $bytes) = @_;
    my $frame = pack 'a N/a', $kind, $bytes;
    while (length $frame) {
        my $count = syswrite $connection, $frame;
        die "the caller hung up\n" unless defined $count;
        substr($frame, 0, $count) = '';
    }
}

# A path with a drive, be it all of the text, the value of an option or in a file's URL, as this
# side has it. Nothing else is changed.
sub unix_path {
    my ($text, $prefix) = @_;
    my ($before, $drive, $rest) =
        $text =~ m{\A(?|(file://)/([A-Za-z]):(/.*)|([\w.-]+=|)([A-Za-z]):([\\/].*))\z}s
        or return $text;
    my $root = realpath("$prefix/dosdevices/" . lc "$drive:");
    return $text unless defined $root;
    return $before . ($root eq '/' ? '' : $root) . $rest =~ tr{\\}{/}r;
}

# By name. Case doesn't tell names apart on Windows.
sub variables {
    return map { /\A([^=]+)=(.*)\z/s ? (uc $1 => $2) : () } @_;
}

# Of the caller's variables the clients get their own ones and those of the language. They find no
# settings in the home folder or the system, and no repository around a drive. The home folder is below
# $folder, and so is what chg has of its own. Where hg is chg, it knows by CHGHG what to start.
sub client_environment {
    my ($caller, $folder) = @_;
    my %environment = (
        PATH => $ENV{PATH},
        HOME => "$folder/home",
        CHGSOCKNAME => "$folder/server",
        LANG => 'C.UTF-8',
        GIT_CONFIG_NOSYSTEM => 1,
        GIT_CEILING_DIRECTORIES => $caller->{WINEPREFIX},
    );
    $environment{CHGHG} = $ENV{CHGHG} if defined $ENV{CHGHG};
    for my $name (grep { /^(?:GIT_|HG|SVN_|LC_|LANG|LOCPATH$)/ } keys %$caller) {
        $environment{$name} = unix_path($caller->{$name}, $caller->{WINEPREFIX});
    }
    return %environment;
}

# Returns only if it failed.
sub become {
    my ($client, $arguments, $folder, $environment) = @_;
    $SIG{PIPE} = 'DEFAULT';
    chdir $folder or die "no folder $folder: $!\n";
    %ENV = %$environment;
    exec { $client } $client, @$arguments or die "no $client: $!\n";
}

# The process, where it reads, and what it writes.
sub start {
    my @run = @_;
    pipe my $input_end, my $input or die "no pipe: $!\n";
    pipe my $output, my $output_end or die "no pipe: $!\n";
    pipe my $errors, my $errors_end or die "no pipe: $!\n";
    my $process = fork;
    die "no process: $!\n" unless defined $process;
    return ($process, $input, $output, $errors) if $process != 0;
    eval {
        open STDIN, '<&', $input_end or die "no input: $!\n";
        open STDOUT, '>&', $output_end or die "no output: $!\n";
        open STDERR, '>&', $errors_end or die "no errors: $!\n";
        become(@run);
    };
    syswrite STDERR, "The relay has $@";
    POSIX::_exit(127);
}

# One text of the caller's input. False if the caller has gone. A client that reads no more loses it.
sub pass_input {
    my ($connection, $input) = @_;
    my $bytes = eval { receive_bytes($connection, receive_number($connection)) };
    return 0 unless defined $bytes;
    close $input if $bytes eq '' && defined fileno $input;
    syswrite $input, $bytes if $bytes ne '' && defined fileno $input;
    return 1;
}

# To the client's end, whose exit code is returned. A caller that has gone takes its client with it, and there
# is none. Wine itself may keep its connection, and so does the end of $life.
sub hand_over {
    my ($connection, $process, $input, $output, $errors) = @_;
    my $sources = IO::Select->new($connection, $life, $output, $errors);
    while ($sources->count > 2) {
        for my $source ($sources->can_read) {
            if ($source == $connection || $source == $life) {
                next if $source == $connection && pass_input($connection, $input);
                kill 'TERM', $process;
                return undef;
            }
            my $count = sysread($source, my $bytes, $block_size);
            send_frame($connection, $source == $output ? 'o' : 'e', $bytes) if $count;
            $sources->remove($source) unless $count;
        }
    }
    waitpid $process, 0;
    return ($? & 127) != 0 ? 128 + ($? & 127) : $? >> 8;
}

# The last word, and the caller's.
sub part {
    my ($connection, $exit_code) = @_;
    send_frame($connection, 'x', $exit_code);
    # A socket that is closed before all was read of it takes back what it sent.
    shutdown $connection, 1;
    my $rest = IO::Select->new($connection, $life);
    1 until grep { $_ == $life || !sysread($_, my $unread, $block_size) } $rest->can_read;
}

sub answer {
    my ($connection, $key, $own_folder);
    ($connection, $life, $key, $own_folder) = @_;
    $SIG{PIPE} = 'IGNORE';
    return unless receive_bytes($connection, 4 + length $key) eq pack 'N/a', $key;
    my ($client, @arguments) = receive_list($connection);
    my ($folder) = receive_list($connection);
    my %caller = variables(receive_list($connection));
    die "not a client: $client\n" unless $clients{$client};
    my %environment = client_environment(\%caller, $own_folder);
    ($folder, @arguments) = map { unix_path($_, $caller{WINEPREFIX}) } $folder, @arguments;
    my $exit_code = hand_over($connection, start($client, \@arguments, $folder, \%environment));
    # Mercurial tries whether it can have links, and leaves one that can't be removed from Wine. The caller
    # may move it as soon as it hears of the end.
    unlink "$_/.hg/wcache/checklink" for $folder, grep { m{^/} } @arguments;
    part($connection, $exit_code) if defined $exit_code;
}

1;
