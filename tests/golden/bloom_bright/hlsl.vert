struct VS_INPUT{
	float3 position : POSITION;
	float2 uv : TEXCOORD0;
};
struct VS_OUTPUT{
	float4 oProjPos : POSITION;
	float2 oUV : TEXCOORD0;
};
VS_OUTPUT main(VS_INPUT input){ 
	float3 iposition = input.position;
	float2 iuv = input.uv;
	VS_OUTPUT output;
	output.oProjPos = float4(iposition,1.0);
	output.oUV = iuv;
	return output;
}
