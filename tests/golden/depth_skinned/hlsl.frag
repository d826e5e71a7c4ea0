struct FS_INPUT{
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
	float2 oClipDepth : TEXCOORD2;
};
struct FS_OUTPUT{
	float4 oColor : COLOR0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float3 ioWorldPos = input.oWorldPos;
	float3 ioNormal = input.oNormal;
	float2 ioClipDepth = input.oClipDepth;
	FS_OUTPUT output;
	float depth = ioClipDepth.x/ioClipDepth.y;
	output.oColor = float4(depth,depth,depth,1.0);
	return output;
}
